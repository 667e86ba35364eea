#include "Screens.h"

#include "AppDelegate.h"
#include "AppKit/NSApplication+Private.h"
#include "AppKit/NSStatusBar+Private.h"
#include "Cover.h"
#include "Foundation/NSBundle+Private.h"
#include "Prefs.h"
#include "ServiceManagement/SMAppService+Private.h"

#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <QWidget>

#include <algorithm>

#include <csignal>

namespace {

class AppDelegateTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        launch(*delegate);
    }
    void TearDown() override {
        Cover::shared()->hide();
        ScreensTest::TearDown();
    }

    static void launch(NSApplicationDelegate& delegate) {
        delegate.applicationDidFinishLaunching(
            NSNotification(NSApplicationDidFinishLaunchingNotification, nullptr));
    }

    NSStatusBarButton& button() {
        return *itemsOf(NSStatusBar::systemStatusBar()).back()->button();
    }

    void expectIcon(const char* symbol, const char* description) {
        const auto& image = button().image();
        ASSERT_TRUE(image);
        EXPECT_EQ(image->name(), symbol);
        EXPECT_EQ(image->accessibilityDescription(), description);
        EXPECT_TRUE(image->isTemplate());
    }

    std::shared_ptr<AppDelegate> delegate = std::make_shared<AppDelegate>();
};

/// Counts how often it is asked to register.
struct LoginService : SMAppService {
    SMAppServiceStatus status() const override { return SMAppServiceStatusNotRegistered; }
    bool registerAndReturnError(std::shared_ptr<NSError>&) override {
        ++registrations;
        return true;
    }
    bool unregisterAndReturnError(std::shared_ptr<NSError>&) override { return true; }

    int registrations = 0;
};

/// The program in a place that each test chooses, as if it had never been there before.
struct FirstRunTest : ScreensTest {
    void SetUp() override {
        ScreensTest::SetUp();
        installMainAppService(service);
        forget();
    }
    void TearDown() override {
        installMainExecutable({});
        installMainAppService(nullptr);
        closeSettings();
        forget();
        ScreensTest::TearDown();
    }

    static void forget() { Prefs::shared().d.removeObjectForKey("loginAsked"); }

    static bool isSettings(const QWidget* widget) {
        return widget->isVisible() && widget->windowTitle() == "General";
    }
    static bool settingsAreOpen() {
        return std::ranges::any_of(QApplication::topLevelWidgets(), isSettings);
    }
    static void closeSettings() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (isSettings(widget)) widget->close();
    }

    static void launchFrom(const std::string& executable) {
        installMainExecutable(executable);
        std::make_shared<AppDelegate>()->applicationDidFinishLaunching(
            NSNotification(NSApplicationDidFinishLaunchingNotification, nullptr));
    }

    const std::shared_ptr<LoginService> service = std::make_shared<LoginService>();
};

/// Terminates the application in its first moment, by the way it is given.
struct Leaver : NSApplicationDelegate {
    explicit Leaver(std::function<void()> way) : leave(std::move(way)) {}
    void applicationDidFinishLaunching(const NSNotification&) override { leave(); }
    std::function<void()> leave;
};

} // namespace

TEST_F(AppDelegateTest, LaunchesWithTheScreensCoveredByNothing) {
    EXPECT_FALSE(Cover::shared()->shown());
    EXPECT_EQ(screens().surfaces().size(), 2u);
    expectIcon("eye.slash", "Blur every screen");
    EXPECT_EQ(button().toolTip(),
              "Nimbrel Lite: click to blur or show every screen, right-click for the menu");
}

TEST_F(AppDelegateTest, ALeftClickToggles) {
    button().mouseUp(NSEvent(NSEventTypeLeftMouseUp, 0));
    EXPECT_TRUE(Cover::shared()->shown());
    button().mouseUp(NSEvent(NSEventTypeLeftMouseUp, 0));
    EXPECT_FALSE(Cover::shared()->shown());
}

TEST_F(AppDelegateTest, AClickWithoutAnEventToggles) {
    delegate->statusClicked();
    EXPECT_TRUE(Cover::shared()->shown());
}

TEST_F(AppDelegateTest, ARightOrControlClickOpensTheMenuAndALeftOneTogglesAgain) {
    const auto openedBy = [](const std::function<void()>& click) {
        QString first;
        QTimer::singleShot(0, [&first] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu) return;
            first = menu->actions().value(0)->text();
            menu->close();
        });
        click();
        return first.toStdString();
    };
    const auto rightClick = [this] { button().rightMouseUp(NSEvent(NSEventTypeRightMouseUp, 0)); };
    const auto controlClick = [this] {
        button().mouseUp(NSEvent(NSEventTypeLeftMouseUp, NSEventModifierFlagControl));
    };
    EXPECT_EQ(openedBy(rightClick), "Blur Every Screen");
    EXPECT_EQ(openedBy(controlClick), "Blur Every Screen");
    EXPECT_FALSE(Cover::shared()->shown());
    button().mouseUp(NSEvent(NSEventTypeLeftMouseUp, 0));
    EXPECT_TRUE(Cover::shared()->shown());
    EXPECT_EQ(openedBy(rightClick), "Show the Screens");
}

TEST_F(AppDelegateTest, TheIconFollowsEveryChangeOfTheCover) {
    Cover::shared()->show();
    expectIcon("eye", "Show the screens");
    Cover::shared()->hide();
    expectIcon("eye.slash", "Blur every screen");
}

TEST_F(AppDelegateTest, ADelegateThatIsGoneFollowsNothing) {
    delegate = nullptr;
    EXPECT_TRUE(itemsOf(NSStatusBar::systemStatusBar()).empty());
    Cover::shared()->show();
}

TEST_F(AppDelegateTest, WithoutABusItKnowsItselfAlone) {
    const auto current = NSRunningApplication::currentApplication();
    const auto found =
        NSRunningApplication::runningApplicationsWithBundleIdentifier("com.vardek.NimbrelLite");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0]->isEqual(*current));
    EXPECT_TRUE(
        NSRunningApplication::runningApplicationsWithBundleIdentifier("com.vardek.Other").empty());
    EXPECT_FALSE(NSWorkspace::sharedWorkspace().accessibilityDisplayShouldReduceTransparency());
}

TEST_F(FirstRunTest, InstalledForGoodItStartsAtLoginAndShowsItsSettingsOnce) {
    // From elsewhere first: that uses nothing up.
    for (const char* elsewhere : {"/home/me/Applications/nimbrel-lite", "/home/me/usr/bin/n"}) {
        launchFrom(elsewhere);
        EXPECT_EQ(service->registrations, 0) << elsewhere;
        EXPECT_FALSE(settingsAreOpen()) << elsewhere;
        EXPECT_FALSE(Prefs::shared().d.boolForKey("loginAsked")) << elsewhere;
    }
    launchFrom("/usr/bin/nimbrel-lite");
    EXPECT_EQ(service->registrations, 1);
    EXPECT_TRUE(settingsAreOpen());
    EXPECT_TRUE(Prefs::shared().d.boolForKey("loginAsked"));
    closeSettings();
    launchFrom("/usr/bin/nimbrel-lite");
    EXPECT_EQ(service->registrations, 1);
    EXPECT_FALSE(settingsAreOpen());
}

TEST(NSApplication, KeepsItsActivationPolicy) {
    NSApp->setActivationPolicy(NSApplicationActivationPolicyAccessory);
    EXPECT_EQ(NSApp->activationPolicy(), 1);
}

TEST(NSApplication, RunsUntilItIsAskedToLeave) {
    const std::function<void()> ways[] = {
        [] { NSApp->terminate(nullptr); },
        [] { std::raise(SIGTERM); },
        [] { std::raise(SIGINT); },
        [] { std::raise(SIGHUP); },
    };
    for (const auto& way : ways) {
        int launches = 0;
        const auto leaver = std::make_shared<Leaver>([&] {
            ++launches;
            way();
        });
        NSApp->setDelegate(leaver);
        NSApp->run();
        EXPECT_EQ(launches, 1);
    }
}

TEST(CurrentEvent, GivesWayToTheOneBefore) {
    const CurrentEvent outer(NSEvent(NSEventTypeLeftMouseUp, 0));
    { const CurrentEvent inner(NSEvent(NSEventTypeRightMouseUp, 0)); }
    EXPECT_EQ(NSApp->currentEvent()->type(), NSEventTypeLeftMouseUp);
}
