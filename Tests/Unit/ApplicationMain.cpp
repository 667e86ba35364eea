#include "AppKit/AppKit.h"

#include <gtest/gtest.h>

namespace {

/// The application that the tests run in. A mere listing of the tests has none.
struct Application : testing::Environment {
    void SetUp() override { NSApplication::sharedApplication(); }
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    testing::AddGlobalTestEnvironment(new Application);
    return RUN_ALL_TESTS();
}
