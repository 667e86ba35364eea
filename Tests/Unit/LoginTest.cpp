#include "FakeLoginService.h"

#include "LoginItem.h"
#include "LoginSwitch.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

struct LoginTest : testing::Test {
    void SetUp() override { installMainAppService(service); }
    void TearDown() override { installMainAppService(nullptr); }

    /// What the action writes to the log.
    static std::string log(const std::function<void()>& action) {
        testing::internal::CaptureStderr();
        action();
        return testing::internal::GetCapturedStderr();
    }

    const std::shared_ptr<FakeLoginService> service = std::make_shared<FakeLoginService>();
};

const char* const line = "Nimbrel Lite: login item not changed: "
                         "Error Domain=Here Code=7 \"Not today\"\n";

} // namespace

TEST_F(LoginTest, SetAsksOnceAndLogsAFailureAlone) {
    for (const bool refuses : {false, true})
        for (const bool on : {true, false}) {
            service->refuses = refuses;
            EXPECT_EQ(log([&] { LoginItem::set(on); }), refuses ? line : "");
            EXPECT_EQ(service->taken(), on ? "register " : "unregister ");
        }
}

TEST_F(LoginTest, OnlyTheStatusEnabledReadsAsOn) {
    for (const int status : {0, 1, 2, 3}) {
        service->now = SMAppServiceStatus(status);
        EXPECT_EQ(LoginSwitch().on, status == 1);
        for (const bool wasOn : {false, true}) {
            service->now = SMAppServiceStatus(wasOn);
            LoginSwitch login;
            service->now = SMAppServiceStatus(status);
            const bool isOn = status == 1;
            login.refresh();
            EXPECT_EQ(login.on, isOn);
            EXPECT_EQ(service->taken(), isOn == wasOn ? "" : isOn ? "register " : "unregister ");
        }
    }
}

TEST_F(LoginTest, AWriteAsksTheSystemWhereItChangesSomething) {
    LoginSwitch login;
    const struct {
        bool on;
        const char* calls;
    } writes[] = {{false, ""}, {true, "register "}, {true, ""}, {false, "unregister "}};
    for (const auto& [on, calls] : writes) {
        login.on = on;
        EXPECT_EQ(service->taken(), calls);
        login.refresh();
        EXPECT_EQ(login.on, on);
        EXPECT_EQ(service->taken(), "");
    }
}

TEST_F(LoginTest, ARefusedChangeStaysUntilTheNextRefresh) {
    LoginSwitch login;
    service->refuses = true;
    EXPECT_EQ(log([&] { login.on = true; }), line);
    EXPECT_TRUE(login.on);
    EXPECT_EQ(service->taken(), "register ");
    EXPECT_EQ(log([&] { login.refresh(); }), line);
    EXPECT_FALSE(login.on);
    EXPECT_EQ(service->taken(), "unregister ");
}
