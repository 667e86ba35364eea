#include "AppKit/AppKit.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <optional>

namespace {

/// The application that the tests run in, with an empty folder for what it stores. A mere listing
/// of the tests has neither.
struct Application : testing::Environment {
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", configuration.emplace().path().toLocal8Bit());
        NSApplication::sharedApplication();
    }
    void TearDown() override { configuration.reset(); }

    std::optional<QTemporaryDir> configuration;
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Application);
    return RUN_ALL_TESTS();
}
