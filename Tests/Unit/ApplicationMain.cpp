#include "HeadlessSession.h"

#include "AppKit/AppKit.h"
#include "Bubble.h"
#include "Cover.h"
#include "Foundation/Foundation.h"
#include "HotKey.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace {

/// The application that the tests run in: without a display and a bus, and with an empty folder for
/// what it stores. A mere listing of the tests has none of that.
struct Application : testing::Environment {
    void SetUp() override {
        WindowServer::HeadlessSession::install();
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("XDG_CONFIG_HOME", configuration.emplace().path().toLocal8Bit());
        NSApplication::sharedApplication();
    }
    void TearDown() override { configuration.reset(); }

    std::optional<QTemporaryDir> configuration;
};

/// Every test finds the program as it is before its launch, whichever tests ran before.
struct CleanStart : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        forgetObservers(NSNotificationCenter::defaultCenter());
        forgetObservers(NSWorkspace::sharedWorkspace().notificationCenter());
        *Cover::shared() = {};
        *Bubble::shared() = {};
        HotKey::shared() = {};
    }
    static void forgetObservers(NSNotificationCenter& center) {
        std::destroy_at(&center);
        std::construct_at(&center);
    }
};

} // namespace

/// Asked for by the leak sanitizer: the font library keeps what it has read until the process ends.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Application);
    testing::UnitTest::GetInstance()->listeners().Append(new CleanStart);
    return RUN_ALL_TESTS();
}
