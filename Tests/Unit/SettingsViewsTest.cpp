// What the controls of the settings do, pressed where they are shown.

#include "FakeLoginService.h"
#include "HostedButtons.h"

#include "Cover.h"
#include "GeneralSettings.h"
#include "SettingsHeader.h"
#include "SummitTag.h"
#include "SupportSettings.h"
#include "Theme.h"

#include "SwiftUI/Qt/HostView.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

void press(const View& view, const char* title) {
    HostView host(view);
    host.show();
    buttonIn(host, title).click();
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

} // namespace

TEST(SettingsViews, ButtonsGoToTheirPages) {
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
        press(button.view, button.title);
        std::string page;
        EXPECT_TRUE(QTest::qWaitFor([&] { return (page = browser.visited()) == button.page; }))
            << button.title << " " << page;
    }
}

TEST(SettingsViews, TheHeadersSecondButtonOpensTheEditionWindow) {
    press(SettingsHeader(), "Buy SUMMIT");
    QWidget* summit = nullptr;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowTitle() == "Nimbrel SUMMIT") summit = window;
    ASSERT_TRUE(summit);
    summit->close();
}

TEST(SettingsViews, TheTagsTextAndItsBoldLockStandInItsMiddle) {
    const auto drawn = [](const View& view) {
        HostView host(view);
        host.resize(host.sizeHint());
        return host.grab().toImage();
    };
    const auto inkOf = [](const QImage& image, int left, int right) {
        std::pair rows{image.height(), 0};
        int share = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = left; x < right; ++x) {
                if (image.pixelColor(x, y).red() > 130) continue; // The capsule is far lighter.
                rows = {std::min(rows.first, y), std::max(rows.second, y + 1)};
                ++share;
            }
        return std::pair{rows, share};
    };
    const QImage tag = drawn(SummitTag());
    for (const auto& [left, right] : {std::pair{0, 22}, {22, tag.width()}}) {
        const auto [first, last] = inkOf(tag, left, right).first;
        EXPECT_NEAR(first + last, tag.height(), 1) << left;
    }
    const auto lock = [&](Font::Weight weight) {
        const QImage image = drawn(Image({.systemName = "lock.fill"})
                                       .font(Font::system({.size = 40, .weight = weight}))
                                       .foregroundStyle(Theme::blue));
        return inkOf(image, 0, image.width()).second;
    };
    EXPECT_GT(lock(Font::Weight::bold), lock(Font::Weight::regular));
}

TEST(SettingsViews, BlurNowCoversAndNeverUncovers) {
    const GeneralSettings tab{.login = std::make_shared<LoginSwitch>()};
    for (int i = 0; i < 2; ++i) {
        press(tab, "Blur Every Screen Now");
        EXPECT_TRUE(Cover::shared()->shown());
    }
    Cover::shared()->hide();
}

TEST(SettingsViews, TheSwitchFollowsTheSystemEachTimeItsTabAppears) {
    const auto service = std::make_shared<FakeLoginService>();
    installMainAppService(service);
    HostView host(GeneralSettings{.login = std::make_shared<LoginSwitch>()});
    for (const bool enabled : {false, true, false}) {
        service->now = SMAppServiceStatus(enabled);
        host.show();
        QApplication::processEvents();
        EXPECT_EQ(buttonIn(host, "Open at login").isChecked(), enabled);
        host.hide();
    }
    installMainAppService(nullptr);
}
