#include "FakeLoginService.h"
#include "Screens.h"

#include "AppDelegate.h"
#include "AppKit/Qt/Application/CurrentEvent.h"
#include "Cover.h"
#include "Foundation/NSBundle+Private.h"
#include "Prefs.h"

#include <QApplication>
#include <QWidget>

namespace {

std::shared_ptr<AppDelegate> launch() {
    const auto delegate = std::make_shared<AppDelegate>();
    delegate->applicationDidFinishLaunching(
        NSNotification(NSApplicationDidFinishLaunchingNotification, nullptr));
    return delegate;
}

/// Whether the settings were open. They are not any more.
bool closeSettings() {
    bool wereOpen = false;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->windowTitle() == "General") {
            wereOpen = true;
            widget->close();
        }
    return wereOpen;
}

} // namespace

struct AppDelegateTest : ScreensTest {};

TEST_F(AppDelegateTest, AClickWithoutAnEventToggles) {
    const auto delegate = launch();
    delegate->statusClicked();
    EXPECT_TRUE(Cover::shared()->shown());
    Cover::shared()->hide();
}

TEST_F(AppDelegateTest, InstalledForGoodItStartsAtLoginAndShowsItsSettingsOnce) {
    const auto service = std::make_shared<FakeLoginService>();
    installMainAppService(service);
    // From elsewhere first: that uses nothing up.
    for (const auto& [executable, isFirst] :
         {std::pair{"/home/me/Applications/nimbrel-lite", false},
          {"/home/me/usr/bin/n", false},
          {"/usr/bin/nimbrel-lite", true},
          {"/usr/bin/nimbrel-lite", false}}) {
        installMainExecutable(executable);
        launch();
        EXPECT_EQ(service->taken(), isFirst ? "register " : "") << executable;
        EXPECT_EQ(closeSettings(), isFirst) << executable;
    }
    EXPECT_TRUE(Prefs::shared().d.boolForKey("loginAsked"));
    Prefs::shared().d.removeObjectForKey("loginAsked");
    installMainExecutable({});
    installMainAppService(nullptr);
}

TEST(CurrentEvent, GivesWayToTheOneBefore) {
    const CurrentEvent outer(NSEvent(NSEventTypeLeftMouseUp, 0));
    { const CurrentEvent inner(NSEvent(NSEventTypeRightMouseUp, 0)); }
    EXPECT_EQ(NSApp->currentEvent()->type(), NSEventTypeLeftMouseUp);
}
