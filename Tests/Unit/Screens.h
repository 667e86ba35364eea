// The screens that a test connects, and the windows that come to stand on them.
#pragma once

#include "HeadlessSession.h"

#include "Foundation/Foundation.h"

#include <gtest/gtest.h>

inline WindowServer::HeadlessSession& screens() {
    return static_cast<WindowServer::HeadlessSession&>(WindowServer::Session::current());
}

inline WindowServer::Display display(uint32_t number, const CGRect& frame) {
    WindowServer::Display result;
    result.number = number;
    result.frame = frame;
    result.visibleFrame = frame;
    return result;
}

/// Two screens side by side, the second one smaller.
inline std::vector<WindowServer::Display> twoScreens() {
    return {display(7, CGRectMake(0, 0, 1920, 1080)), display(9, CGRectMake(1920, 56, 1280, 1024))};
}

class ScreensTest : public testing::Test {
protected:
    void SetUp() override {
        screens().setDisplays(twoScreens());
        screens().blurAnswer = 0;
        screens().setThemeName("");
    }
    void TearDown() override { screens().setDisplays({}); }
};
