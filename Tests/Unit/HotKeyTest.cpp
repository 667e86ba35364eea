#include "HotKey.h"

#include "Carbon/Carbon+Private.h"
#include "Cover.h"
#include "Screens.h"

static_assert(cmdKey + optionKey + controlKey == 0x1900);
static_assert(kEventClassKeyboard == 0x6B657962 && kEventHotKeyPressed == 5);
static_assert(kEventParamDirectObject == 0x2D2D2D2D && typeEventHotKeyID == 0x686B6964);

namespace {

struct HotKeyTest : ScreensTest {
    void TearDown() override {
        screens().grantsKeys = true;
        Cover::shared()->hide();
        ScreensTest::TearDown();
    }
};

} // namespace

TEST_F(HotKeyTest, TakesOneKeyAndAsksAgainOnlyForOneThatItHasNotGot) {
    HotKey hotKey;
    for (const bool granted : {false, true, false}) {
        screens().grantsKeys = granted;
        screens().grabbedKey.reset();
        hotKey.register_();
        EXPECT_EQ(screens().grabbedKey.has_value(), granted);
        if (!granted) continue;
        const WindowServer::KeyChord expected{
            .place = "AB06", .kernelCode = 49, .control = true, .alt = true, .super = true};
        EXPECT_EQ(screens().grabbedKey, expected);
    }
    EXPECT_TRUE(hotKey.registered());
    for (const bool shown : {true, false}) {
        screens().onKeyPressed();
        EXPECT_EQ(Cover::shared()->shown(), shown);
    }
}

TEST_F(HotKeyTest, TheHandlerTellsWhatItDealtWith) {
    EXPECT_EQ(hotKeyPressed(nullptr, nullptr, nullptr), eventNotHandledErr);
    const std::pair<EventHotKeyID, OSStatus> cases[] = {{{'NLHK', 2}, -9874}, {{'else', 1}, 0}};
    for (const auto& [key, status] : cases) {
        OpaqueEventRef event{key};
        EXPECT_EQ(hotKeyPressed(nullptr, &event, nullptr), status);
        EXPECT_EQ(Cover::shared()->shown(), status == noErr);
    }
    EventHotKeyRef ref = nullptr;
    EXPECT_EQ(RegisterEventHotKey(0, 0x1900, {}, GetApplicationEventTarget(), 0, &ref), -9879);
}
