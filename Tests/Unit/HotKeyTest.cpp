#include "HotKey.h"

#include "Carbon/CarbonEvents+Private.h"
#include "Cover.h"
#include "Screens.h"

static_assert(cmdKey + optionKey + controlKey == 0x1900);
static_assert(eventNotHandledErr == -9874);
static_assert(kEventClassKeyboard == 0x6B657962);
static_assert(kEventHotKeyPressed == 5);
static_assert(kEventParamDirectObject == 0x2D2D2D2D);
static_assert(kVK_ANSI_N == 45);
static_assert(noErr == 0);
static_assert(sizeof(EventHotKeyID) == 8);
static_assert(typeEventHotKeyID == 0x686B6964);

namespace {

struct HotKeyTest : ScreensTest {
    void SetUp() override {
        ScreensTest::SetUp();
        screens().grantsKeys = true;
        screens().grabbedKey.reset();
        screens().onKeyPressed = nullptr;
    }
    void TearDown() override {
        screens().grantsKeys = true;
        Cover::shared()->hide();
        ScreensTest::TearDown();
    }

    HotKey hotKey;
};

OpaqueEventRef eventOf(EventHotKeyID key) { return {{kEventClassKeyboard, 5}, key}; }

} // namespace

TEST_F(HotKeyTest, TakesOneKeyAndTogglesAtEachPress) {
    hotKey.register_();
    ASSERT_TRUE(hotKey.registered());
    const WindowServer::KeyChord expected{
        .place = "AB06", .kernelCode = 49, .control = true, .alt = true, .super = true};
    EXPECT_EQ(screens().grabbedKey, expected);
    for (const bool shown : {true, false, true}) {
        const PostCounter posts(Cover::changed);
        screens().onKeyPressed();
        EXPECT_EQ(Cover::shared()->shown(), shown);
        EXPECT_EQ(posts.count(), 1);
    }
}

TEST_F(HotKeyTest, AsksAgainOnlyForAKeyThatItHasNotGot) {
    screens().grantsKeys = false;
    hotKey.register_();
    EXPECT_FALSE(hotKey.registered());
    EXPECT_FALSE(screens().onKeyPressed);

    screens().grantsKeys = true;
    hotKey.register_();
    EXPECT_TRUE(hotKey.registered());
    screens().grabbedKey.reset();
    hotKey.register_();
    EXPECT_TRUE(hotKey.registered());
    EXPECT_FALSE(screens().grabbedKey);
}

TEST_F(HotKeyTest, TheHandlerTellsWhatItDealtWith) {
    EXPECT_EQ(hotKeyPressed(nullptr, nullptr, nullptr), eventNotHandledErr);
    auto foreign = eventOf({'NLHK', 2});
    EXPECT_EQ(hotKeyPressed(nullptr, &foreign, nullptr), eventNotHandledErr);
    EXPECT_FALSE(Cover::shared()->shown());
    auto own = eventOf({'else', 1}); // The signature is no matter.
    EXPECT_EQ(hotKeyPressed(nullptr, &own, nullptr), noErr);
    EXPECT_TRUE(Cover::shared()->shown());
}

TEST_F(HotKeyTest, ThePlatformRefusesWhatItDoesNotKnow) {
    EventHotKeyRef ref = nullptr;
    EXPECT_EQ(RegisterEventHotKey(0, 0x1900, {}, GetApplicationEventTarget(), 0, &ref),
              eventHotKeyInvalidErr);
    EXPECT_EQ(RegisterEventHotKey(45, 0x1900, {}, nullptr, 0, &ref), paramErr);
    EXPECT_FALSE(ref);

    auto event = eventOf({'NLHK', 1});
    EventHotKeyID key = {};
    EXPECT_EQ(GetEventParameter(&event, kEventParamDirectObject, 'long', nullptr, 8, nullptr, &key),
              eventParameterNotFoundErr);
    EXPECT_EQ(GetEventParameter(&event, kEventParamDirectObject, typeEventHotKeyID, nullptr, 4,
                                nullptr, &key),
              noErr);
    EXPECT_EQ(key.signature, OSType{'NLHK'});
    EXPECT_EQ(key.id, 0u) << "no more than the buffer takes";
}

TEST(EventTarget, AsksTheLastHandlerFirstUntilOneHasDealtWithTheEvent) {
    static std::string log;
    static OSStatus answer;
    log.clear();
    const EventHandlerUPP first = [](EventHandlerCallRef, EventRef, void* userData) -> OSStatus {
        log += static_cast<const char*>(userData);
        return noErr;
    };
    const EventHandlerUPP last = [](EventHandlerCallRef, EventRef, void*) -> OSStatus {
        log += "last ";
        return answer;
    };
    const EventTypeSpec type = {'test', 1};
    const auto target = GetApplicationEventTarget();
    EventHandlerRef handler = nullptr;
    char name[] = "first ";
    EXPECT_EQ(InstallEventHandler(target, first, 1, &type, name, &handler), noErr);
    EXPECT_TRUE(handler);
    EXPECT_EQ(InstallEventHandler(target, last, 1, &type, nullptr, nullptr), noErr);
    EXPECT_EQ(InstallEventHandler(target, last, 1, &type, nullptr, nullptr),
              eventHandlerAlreadyInstalledErr);
    EXPECT_EQ(InstallEventHandler(nullptr, last, 1, &type, nullptr, nullptr), paramErr);

    OpaqueEventRef event{type, {}};
    answer = eventNotHandledErr;
    EXPECT_EQ(SendEventToEventTarget(&event, target), noErr);
    answer = paramErr;
    EXPECT_EQ(SendEventToEventTarget(&event, target), paramErr);
    OpaqueEventRef unwanted{{'test', 2}, {}};
    EXPECT_EQ(SendEventToEventTarget(&unwanted, target), eventNotHandledErr);
    EXPECT_EQ(log, "last first last ");
}
