// The program's start and its login item.
#include "Screens.h"

#include "AppDelegate.h"
#include "Cover.h"
#include "Foundation/NSBundle+Private.h"
#include "LoginSwitch.h"
#include "Prefs.h"
#include "ServiceManagement/LoginEntry+Private.h"

#include <QApplication>
#include <QWidget>

#include <utility>

namespace {

/// Keeps what it is asked for, or refuses.
struct FakeLoginService : SMAppService {
    SMAppServiceStatus status() const override { return now; }
    bool registerAndReturnError(std::shared_ptr<NSError>& error) override {
        return change("register ", SMAppServiceStatusEnabled, error);
    }
    bool unregisterAndReturnError(std::shared_ptr<NSError>& error) override {
        return change("unregister ", SMAppServiceStatusNotRegistered, error);
    }
    bool change(const char* call, SMAppServiceStatus wanted, std::shared_ptr<NSError>& error) {
        calls += call;
        if (refuses)
            error = std::make_shared<NSError>("Here", 7, "Not today");
        else
            now = wanted;
        return !refuses;
    }

    /// What was asked since the last time.
    std::string taken() { return std::exchange(calls, ""); }

    SMAppServiceStatus now = SMAppServiceStatusNotRegistered;
    bool refuses = false;
    std::string calls;
};

struct ProgramTest : ScreensTest {
    ProgramTest() { installMainAppService(service); }
    ~ProgramTest() override { installMainAppService(nullptr); }

    static std::shared_ptr<AppDelegate> launch() {
        const auto delegate = std::make_shared<AppDelegate>();
        delegate->applicationDidFinishLaunching(
            NSNotification(NSApplicationDidFinishLaunchingNotification, nullptr));
        return delegate;
    }

    const std::shared_ptr<FakeLoginService> service = std::make_shared<FakeLoginService>();
};

/// The window on the screen whose title begins so, or null.
QWidget* windowCalled(const QString& title) {
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible() && widget->windowTitle().startsWith(title)) return widget;
    return nullptr;
}

} // namespace

TEST_F(ProgramTest, InstalledForGoodItStartsAtLoginAndShowsItsSettingsOnce) {
    // From elsewhere first: that uses nothing up.
    for (const auto& [executable, isFirst] :
         {std::pair{"/home/me/Applications/nimbrel-lite", false},
          {"/home/me/usr/bin/n", false},
          {"/optional/n", false},
          {"/opt/folder/bin/nimbrel-lite", true},
          {"/usr/bin/nimbrel-lite", false}}) {
        installMainExecutable(executable);
        launch()->statusClicked(); // Without an event.
        EXPECT_TRUE(Cover::shared()->shown());
        Cover::shared()->hide();
        EXPECT_EQ(service->taken(), isFirst ? "register " : "") << executable;
        QWidget* const settings = windowCalled("General");
        EXPECT_EQ(settings != nullptr, isFirst) << executable;
        if (settings) settings->close();
    }
    EXPECT_TRUE(Prefs::shared().d.boolForKey("loginAsked"));
    Prefs::shared().d.removeObjectForKey("loginAsked");
    installMainExecutable({});
}

TEST_F(ProgramTest, ItsSwitchFollowsTheSystemAndAsksItOnce) {
    for (const int status : {0, 1, 2, 3})
        for (const bool wasOn : {false, true}) {
            service->now = SMAppServiceStatus(wasOn);
            LoginSwitch login;
            EXPECT_EQ(login.on, wasOn);
            service->now = SMAppServiceStatus(status);
            const bool isOn = status == 1; // Only enabled reads as on.
            login.refresh();
            EXPECT_EQ(login.on, isOn);
            EXPECT_EQ(service->taken(), isOn == wasOn ? "" : isOn ? "register " : "unregister ");
            login.on = isOn;
            EXPECT_EQ(service->taken(), "");
        }
    service->now = SMAppServiceStatusEnabled;
    LoginSwitch login;
    service->refuses = true;
    testing::internal::CaptureStderr();
    login.on = false;
    EXPECT_FALSE(login.on) << "until the next refresh";
    login.refresh();
    EXPECT_TRUE(login.on);
    const std::string line =
        "Nimbrel Lite: login item not changed: Error Domain=Here Code=7 \"Not today\"\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), line + line);
}
