#include "AppKit/AppKit.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <optional>

namespace {

/// The application that the tests run in: without a display and a bus, and with an empty folder for
/// what it stores. A mere listing of the tests has none of that.
struct Application : testing::Environment {
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("XDG_CONFIG_HOME", configuration.emplace().path().toLocal8Bit());
        NSApplication::sharedApplication();
    }
    void TearDown() override { configuration.reset(); }

    std::optional<QTemporaryDir> configuration;
};

} // namespace

/// Asked for by the leak sanitizer: the font library keeps what it has read until the process ends.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Application);
    return RUN_ALL_TESTS();
}
