#include "SwiftUIDescription.h"

#include "Cover.h"
#include "GeneralSettings.h"
#include "Locked.h"
#include "LockedRow.h"
#include "SettingsHeader.h"
#include "SummitFeatureList.h"
#include "SummitTag.h"
#include "SummitWindowView.h"
#include "SupportSettings.h"

#include "ServiceManagement/SMAppService+Private.h"

#include <QApplication>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// A view as it stands so many levels deep in another one.
std::string within(int levels, const View& view) {
    std::istringstream lines(describe(view));
    std::string result;
    for (std::string line; std::getline(lines, line);)
        result += std::string(static_cast<size_t>(levels) * 4, ' ') + line + "\n";
    return result;
}

std::string row(const std::string& label, const std::string& note) {
    return within(3, LockedRow{.label = label, .note = note, .feature = Locked::all[0]});
}

/// A browser that only notes where it was sent, the one that is found from here on.
class Browser {
public:
    Browser() {
        QFile program(m_folder.filePath("xdg-open"));
        program.open(QFile::WriteOnly);
        program.write("#!/bin/sh\necho \"$1\" > '" + m_note.toUtf8() + "'\n");
        program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", m_folder.path().toUtf8());
    }
    ~Browser() { qputenv("PATH", m_path); }

    /// What it noted since the last call; empty while that is nothing.
    std::string visited() const {
        QFile file(m_note);
        if (!file.open(QFile::ReadOnly)) return {};
        const std::string text = file.readAll().toStdString();
        if (text.ends_with('\n')) file.remove();
        return text;
    }

private:
    const QTemporaryDir m_folder;
    const QString m_note = m_folder.filePath("visited");
    const QByteArray m_path = qgetenv("PATH");
};

QWidget* windowCalled(const QString& title) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowTitle() == title) return window;
    return nullptr;
}

struct Enabled : SMAppService {
    SMAppServiceStatus status() const override { return SMAppServiceStatusEnabled; }
    bool registerAndReturnError(std::shared_ptr<NSError>&) override { return true; }
    bool unregisterAndReturnError(std::shared_ptr<NSError>&) override { return true; }
};

} // namespace

TEST(ViewTree, TagAndLockedRow) {
    EXPECT_EQ(describe(SummitTag()), R"(HStack(center, spacing 4)
    Image(lock.fill)
    .font(9 bold)
    Text("SUMMIT")
    .font(10 bold rounded)
    .tracking(0.6)
.foregroundStyle(Color(30 136 229))
.padding(horizontal, 8)
.padding(vertical, 3)
.background
    Capsule.fill(Color(30 136 229) opacity 0.14)
.accessibilityElement(children ignore)
.accessibilityLabel("Part of Nimbrel SUMMIT")
)");
    EXPECT_EQ(describe(LockedRow{.label = "One", .note = "Two", .feature = Locked::all[3]}),
              R"(Button
    HStack(center, spacing 10)
        VStack(leading, spacing 2)
            Text(verbatim "One")
            Text(verbatim "Two")
            .font(caption)
            .foregroundStyle(secondary)
        Spacer
)" + within(2, SummitTag()) +
                  R"(    .contentShape(Rectangle)
.buttonStyle(plain)
.accessibilityHint("Part of Nimbrel SUMMIT. Opens a short explanation.")
)");
}

TEST(ViewTree, FeatureList) {
    const std::string list = describe(SummitFeatureList());
    EXPECT_TRUE(list.starts_with(R"(VStack(leading, spacing 14)
    ForEach(camera)
        HStack(top, spacing 12)
            Image(camera.viewfinder)
            .font(15)
            .foregroundStyle(Color(30 136 229))
            .frame(width 24, center)
            VStack(leading, spacing 1)
                Text(verbatim "Blur when someone looks at your screen")
                .font(13 semibold)
                Text(verbatim "Uses your Mac's camera to blur your screens the moment someone looks at them.")
                .font(callout)
                .foregroundStyle(secondary)
                .fixedSize(vertical)
    ForEach(gestures)
)")) << list;
    EXPECT_TRUE(list.ends_with("\n.frame(maxWidth inf, leading)\n")) << list;
    size_t at = 0;
    for (const char* feature : {"camera", "gestures", "screens", "strength", "looks", "fade",
                                "report", "automation", "shortcuts", "buttons"}) {
        at = list.find("ForEach(" + std::string(feature) + ")", at);
        EXPECT_NE(at, std::string::npos) << feature;
    }
    EXPECT_EQ(Locked::all.size(), 10u);
}

TEST(ViewTree, EditionWindow) {
    EXPECT_EQ(describe(SummitWindowView()), R"(VStack(center, spacing 0)
    HStack(center, spacing 12)
        Image(star.fill)
        .font(28)
        .foregroundStyle(Color(30 136 229))
        VStack(leading, spacing 2)
            Text("Nimbrel SUMMIT")
            .font(title2 bold)
            Text("Everything in Nimbrel Lite, plus more control, more looks and a blur that reacts for you.")
            .font(callout)
            .foregroundStyle(secondary)
            .fixedSize(vertical)
        Spacer(minLength 0)
    .padding(all, 20)
    Divider
    ScrollView
)" + within(2, SummitFeatureList()) +
                                                R"(        .padding(all, 20)
    Divider
    HStack(center)
        Spacer
        Button
            Text("Not Now")
        .keyboardShortcut(cancelAction)
        Button
            Text("Buy Nimbrel SUMMIT…")
        .keyboardShortcut(defaultAction)
    .controlSize(large)
    .padding(all, 16)
.tint(Color(30 136 229))
.frame(width 500, height 600, center)
)");
    std::string pressed;
    const SummitWindowView window{.buy = [&] { pressed += "buy "; },
                                  .notNow = [&] { pressed += "not now"; }};
    actionOf(window, "Buy Nimbrel SUMMIT…")();
    actionOf(window, "Not Now")();
    EXPECT_EQ(pressed, "buy not now");
}

TEST(ViewTree, SettingsHeader) {
    EXPECT_EQ(describe(SettingsHeader()), R"(VStack(center, spacing 0)
    HStack(center, spacing 10)
        Text("Nimbrel Lite")
        .font(headline)
        Text(verbatim "1.0.0")
        .font(subheadline)
        .foregroundStyle(secondary)
        Spacer
        Button
            Label("Support VARDEK", heart)
        Button
            Label("Buy SUMMIT", star.fill)
        .buttonStyle(borderedProminent)
    .controlSize(regular)
    .padding(horizontal, 20)
    .padding(vertical, 10)
    Divider
.tint(Color(30 136 229))
)");
}

// No key is taken in this process, so the red line stands.
TEST(ViewTree, GeneralTab) {
    const GeneralSettings tab{.login = std::make_shared<LoginSwitch>()};
    EXPECT_EQ(
        describe(tab),
        "VStack(center, spacing 0)\n" + within(1, SettingsHeader()) +
            "    Form\n        Section(\"Blur\")\n" +
            row("Strength", "Fixed at 70% in Lite. SUMMIT goes up to 200%.") +
            row("Look", "Dark glass in Lite. SUMMIT adds light glass, blur only and solid cover.") +
            R"(            HStack(center)
                Spacer
                Button
                    Text("Blur Every Screen Now")
        footer
            Text(verbatim "Every connected screen is blurred, menu bars and Dock included. Clicks, scrolling and typing still go to the app underneath. Click the floating button again, or press ⌃⌥⌘N, to show the screens. With Reduce transparency on (System Settings › Accessibility › Display) the solid cover is used.")
            .font(caption)
            .foregroundStyle(secondary)
        Section("Automatic blur")
)" + row("Camera", "Blur by itself when someone looks at your screen.") +
            R"(        Section("Keyboard shortcut")
            HStack(center, spacing 8)
                VStack(leading, spacing 2)
                    Text("Blur or show every screen")
                    Text("In use by another app, so it doesn't work here. The floating button and the menu bar icon still do.")
                    .font(caption)
                    .foregroundStyle(Color::red)
                Spacer
                Text(verbatim "⌃⌥⌘N")
                .font(13 medium rounded monospacedDigit)
                .padding(horizontal, 10)
                .padding(vertical, 4)
                .background
                    RoundedRectangle(6).fill(Color::secondary opacity 0.15)
        Section("General")
            Toggle("Open at login", off)
        footer
            Text(verbatim "Nimbrel Lite lives in the menu bar (the crossed-out eye): click it to blur or show the screens, right-click it for the menu. There's a floating button on every screen: drag one to move it. Nothing on your screen is recorded or sent anywhere.")
            .font(caption)
            .foregroundStyle(secondary)
    .formStyle(grouped)
.tint(Color(30 136 229))
.onAppear
)");
    actionOf(tab, "Blur Every Screen Now")();
    EXPECT_TRUE(Cover::shared()->shown());
    actionOf(tab, "Blur Every Screen Now")();
    EXPECT_TRUE(Cover::shared()->shown());
    Cover::shared()->hide();
}

TEST(ViewTree, SupportTab) {
    EXPECT_EQ(describe(SupportSettings()), "VStack(center, spacing 0)\n" +
                                               within(1, SettingsHeader()) + R"(    Form
        Section("Support Nimbrel")
            VStack(leading, spacing 12)
                HStack(center, spacing 10)
                    Image(heart.fill)
                    .font(22)
                    .foregroundStyle(Color::pink)
                    Text("Thank you for using Nimbrel Lite")
                    .font(15 semibold)
                Text("Nimbrel Lite is free, with no ads and no tracking. If it helps you keep your screens private, you can support VARDEK.")
                .foregroundStyle(secondary)
                .fixedSize(vertical)
                Button
                    Label("Support VARDEK…", heart)
                .controlSize(large)
            .padding(vertical, 4)
        Section("What Nimbrel SUMMIT adds")
            VStack(leading, spacing 14)
                Text(verbatim "Everything in Nimbrel Lite, plus more control, more looks and a blur that reacts for you.")
                .foregroundStyle(secondary)
                .fixedSize(vertical)
)" + within(4, SummitFeatureList()) +
                                               R"(            .padding(vertical, 4)
            HStack(center)
                Spacer
                Button
                    Text("Buy Nimbrel SUMMIT…")
                .buttonStyle(borderedProminent)
                .controlSize(large)
    .formStyle(grouped)
.tint(Color(30 136 229))
)");
}

TEST(ViewTree, ButtonsGoToTheirPages) {
    const Browser browser;
    const struct {
        View view;
        const char* title;
        const char* page;
    } buttons[] = {
        {SettingsHeader(), "Support VARDEK", "https://vardek.example/support-vardek/\n"},
        {SupportSettings(), "Support VARDEK…", "https://vardek.example/support-vardek/\n"},
        {SupportSettings(), "Buy Nimbrel SUMMIT…", "https://vardek.example/buy/nimbrel/\n"},
    };
    for (const auto& button : buttons) {
        actionOf(button.view, button.title)();
        std::string page;
        EXPECT_TRUE(QTest::qWaitFor([&] { return (page = browser.visited()) == button.page; }))
            << button.title << " " << page;
    }
}

TEST(ViewTree, TheHeadersSecondButtonOpensTheEditionWindow) {
    actionOf(SettingsHeader(), "Buy SUMMIT")();
    QWidget* const window = windowCalled("Nimbrel SUMMIT");
    ASSERT_TRUE(window);
    window->close();
}

TEST(ViewTree, ALockedRowTellsOfItsFeature) {
    const LockedRow strength = {.label = "One", .note = "Two", .feature = Locked::all[3]};
    QString told;
    QTimer::singleShot(0, [&] {
        QWidget* const alert = QApplication::activeModalWidget();
        ASSERT_TRUE(alert);
        told = alert->accessibleName();
        for (auto* const button : alert->findChildren<QPushButton*>())
            if (button->text() == "Not Now") button->click();
    });
    actionOf(strength, "One, Two, Part of Nimbrel SUMMIT")();
    EXPECT_EQ(told, "Blur strength up to 200% is part of Nimbrel SUMMIT");
}

TEST(ViewTree, TheToggleFollowsTheSystemWhenItsTabAppears) {
    const auto login = std::make_shared<LoginSwitch>();
    const GeneralSettings tab{.login = login};
    EXPECT_NE(describe(tab).find("Toggle(\"Open at login\", off)"), std::string::npos);
    installMainAppService(std::make_shared<Enabled>());
    appear(tab);
    installMainAppService(nullptr);
    EXPECT_NE(describe(tab).find("Toggle(\"Open at login\", on)"), std::string::npos);
}
