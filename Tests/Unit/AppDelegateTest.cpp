#include "FakeLoginService.h"
#include "Screens.h"

#include "AppDelegate.h"
#include "AppKit/NSApplication+Private.h"
#include "AppKit/NSStatusBar+Private.h"
#include "Cover.h"
#include "Foundation/NSBundle+Private.h"
#include "Prefs.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace {

void launch(NSApplicationDelegate& delegate) {
    delegate.applicationDidFinishLaunching(
        NSNotification(NSApplicationDidFinishLaunchingNotification, nullptr));
}

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

    std::shared_ptr<AppDelegate> delegate = std::make_shared<AppDelegate>();
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
        launch(*std::make_shared<AppDelegate>());
    }

    const std::shared_ptr<FakeLoginService> service = std::make_shared<FakeLoginService>();
};

} // namespace

TEST_F(AppDelegateTest, AClickWithoutAnEventToggles) {
    delegate->statusClicked();
    EXPECT_TRUE(Cover::shared()->shown());
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
        EXPECT_EQ(service->taken(), "") << elsewhere;
        EXPECT_FALSE(settingsAreOpen()) << elsewhere;
        EXPECT_FALSE(Prefs::shared().d.boolForKey("loginAsked")) << elsewhere;
    }
    launchFrom("/usr/bin/nimbrel-lite");
    EXPECT_EQ(service->taken(), "register ");
    EXPECT_TRUE(settingsAreOpen());
    EXPECT_TRUE(Prefs::shared().d.boolForKey("loginAsked"));
    closeSettings();
    launchFrom("/usr/bin/nimbrel-lite");
    EXPECT_EQ(service->taken(), "");
    EXPECT_FALSE(settingsAreOpen());
}

TEST(CurrentEvent, GivesWayToTheOneBefore) {
    const CurrentEvent outer(NSEvent(NSEventTypeLeftMouseUp, 0));
    { const CurrentEvent inner(NSEvent(NSEventTypeRightMouseUp, 0)); }
    EXPECT_EQ(NSApp->currentEvent()->type(), NSEventTypeLeftMouseUp);
}
