#include "FakeLoginService.h"

#include "LoginSwitch.h"

#include <gtest/gtest.h>

namespace {

struct LoginTest : testing::Test {
    void SetUp() override { installMainAppService(service); }
    void TearDown() override { installMainAppService(nullptr); }

    const std::shared_ptr<FakeLoginService> service = std::make_shared<FakeLoginService>();
};

} // namespace

TEST_F(LoginTest, ARefreshFollowsTheSystemWhereOnlyEnabledReadsAsOn) {
    for (const int status : {0, 1, 2, 3})
        for (const bool wasOn : {false, true}) {
            service->now = SMAppServiceStatus(wasOn);
            LoginSwitch login;
            EXPECT_EQ(login.on, wasOn);
            service->now = SMAppServiceStatus(status);
            const bool isOn = status == 1;
            login.refresh();
            EXPECT_EQ(login.on, isOn);
            EXPECT_EQ(service->taken(), isOn == wasOn ? "" : isOn ? "register " : "unregister ");
        }
}

TEST_F(LoginTest, AWriteAsksTheSystemOnceAndARefusalStaysUntilTheNextRefresh) {
    LoginSwitch login;
    for (const bool on : {false, true, true, false, true}) {
        const bool changes = login.on != on;
        login.on = on;
        EXPECT_EQ(service->taken(), !changes ? "" : on ? "register " : "unregister ");
    }
    service->refuses = true;
    testing::internal::CaptureStderr();
    login.on = false;
    EXPECT_FALSE(login.on);
    login.refresh();
    EXPECT_TRUE(login.on);
    EXPECT_EQ(service->taken(), "unregister register ");
    const std::string line =
        "Nimbrel Lite: login item not changed: Error Domain=Here Code=7 \"Not today\"\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), line + line);
}
