// The covers' states, as the session is told of them, and the key that changes them.
#include "Screens.h"

#include "Carbon/Carbon+Private.h"
#include "Cover.h"
#include "HotKey.h"

#include <algorithm>

using WindowServer::HeadlessSurface;

static_assert(cmdKey + optionKey + controlKey == 0x1900);
static_assert(kEventClassKeyboard == 0x6B657962 && kEventHotKeyPressed == 5);
static_assert(kEventParamDirectObject == 0x2D2D2D2D && typeEventHotKeyID == 0x686B6964);

namespace {

class CoverTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        restart();
        NSNotificationCenter::defaultCenter().addObserverForName(
            Cover::changed, nullptr, NSOperationQueue::mainQueue(), [this](const auto& note) {
                ++posts;
                EXPECT_EQ(note.object(), cover);
                for (const auto* surface : screens().surfaces())
                    EXPECT_EQ(surface->alpha, cover->shown() ? 1 : 0);
            });
    }

    void restart() {
        screens().setDisplays(twoScreens());
        cover = std::make_shared<Cover>();
        m_surfacesBefore = screens().surfacesMade();
        cover->start();
    }

    int windowsMade() const { return screens().surfacesMade() - m_surfacesBefore; }

    static void expectAll(bool shown) {
        const auto& all = screens().surfaces();
        EXPECT_EQ(all.size(), NSScreen::screens().size());
        for (const auto& screen : NSScreen::screens()) {
            const auto found = std::ranges::find(all, screen->frame(), &HeadlessSurface::frame);
            ASSERT_NE(found, all.end());
            EXPECT_TRUE((*found)->ordered);
            EXPECT_EQ((*found)->alpha, shown ? 1 : 0);
            EXPECT_EQ((*found)->radius, shown ? 168 : 1);
            EXPECT_EQ((*found)->look.overlay.alpha, shown ? 0.4 : 0);
        }
    }

    std::shared_ptr<Cover> cover;
    int posts = 0;

private:
    int m_surfacesBefore = 0;
};

} // namespace

TEST_F(CoverTest, SaysSoOnceAllWindowsHaveChangedAndMakesNone) {
    expectAll(false);
    for (const bool shown : {false, true, true, false, true}) {
        shown ? cover->show() : cover->hide();
        EXPECT_EQ(cover->shown(), shown);
        expectAll(shown);
    }
    EXPECT_EQ(posts, 3) << "one for each change";
    EXPECT_EQ(windowsMade(), 2);
}

TEST_F(CoverTest, ChangesOfTheScreensKeepTheState) {
    auto moved = twoScreens();
    moved[1].frame = CGRectMake(0, 1080, 1600, 900);
    auto added = twoScreens();
    added.push_back(display(11, CGRectMake(-800, 0, 800, 600)));
    const std::pair<std::vector<WindowServer::Display>, int> changes[] = {
        {added, 3}, {{twoScreens()[0]}, 3}, {twoScreens(), 4}, {moved, 4}, {{}, 4}};
    for (const bool shown : {true, false}) {
        restart();
        if (shown) cover->show();
        posts = 0;
        for (const auto& [displays, windows] : changes) {
            screens().setDisplays(displays);
            EXPECT_EQ(cover->shown(), shown);
            EXPECT_EQ(windowsMade(), windows);
            expectAll(shown);
        }
        EXPECT_EQ(posts, 0);
    }
    screens().setDisplays({twoScreens()[0], display(0, CGRectMake(1920, 0, 100, 100))});
    EXPECT_EQ(screens().surfaces().size(), 1u) << "none where there is no number";
}

TEST_F(CoverTest, ARefusedBlurBringsUpOneMaterialAndLeavesNothingBehind) {
    const HeadlessSurface& surface = *screens().surfaces().front();
    for (const int answer : {1006, 0, 1006}) {
        screens().blurAnswer = answer;
        cover->show();
        EXPECT_EQ(surface.look, (WindowServer::Look{answer != 0, CGColor{0, 0, 0, 0.4}}));
        cover->hide();
        EXPECT_EQ(surface.look, WindowServer::Look{});
    }
    cover->show();
    cover = nullptr; // What observed for it does nothing more.
    screens().setDisplays({});
    NSWorkspace::sharedWorkspace().notificationCenter().postNotificationName(
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr);
    EXPECT_TRUE(screens().surfaces().empty());
}

TEST_F(ScreensTest, TheHotKeysHandlerTellsWhatItDealtWith) {
    EXPECT_EQ(hotKeyPressed(nullptr, nullptr, nullptr), eventNotHandledErr);
    const std::pair<EventHotKeyID, OSStatus> cases[] = {{{'NLHK', 2}, -9874}, {{'else', 1}, 0}};
    for (const auto& [key, status] : cases) {
        OpaqueEventRef event{key};
        EXPECT_EQ(hotKeyPressed(nullptr, &event, nullptr), status);
        EXPECT_EQ(Cover::shared()->shown(), status == noErr);
    }
    Cover::shared()->hide();
    screens().grantsKeys = false;
    HotKey::shared().register_();
    EXPECT_FALSE(HotKey::shared().registered());
    screens().grantsKeys = true;
}
