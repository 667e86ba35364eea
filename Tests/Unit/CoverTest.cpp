// The covers' states, as the session is told of them.
#include "Screens.h"

#include "Cover.h"

#include <algorithm>

using WindowServer::HeadlessSurface;

namespace {

class CoverTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        cover->start();
        NSNotificationCenter::defaultCenter().addObserverForName(
            Cover::changed, nullptr, NSOperationQueue::mainQueue(), [this](const auto& note) {
                ++posts;
                EXPECT_EQ(note.object(), cover);
                for (const auto* surface : screens().livingSurfaces())
                    EXPECT_EQ(surface->alpha, cover->shown() ? 1 : 0);
            });
    }

    static void expectAll(bool shown) {
        const auto& all = screens().livingSurfaces();
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

    std::shared_ptr<Cover> cover = std::make_shared<Cover>();
    int posts = 0;
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
    screens().setDisplays({twoScreens()[0], display(0, CGRectMake(1920, 0, 100, 100))});
    EXPECT_EQ(screens().livingSurfaces().size(), 1u) << "none where there is no number";
}

TEST_F(CoverTest, ARefusedBlurBringsUpOneMaterialAndLeavesNothingBehind) {
    const HeadlessSurface& surface = *screens().livingSurfaces().front();
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
    EXPECT_TRUE(screens().livingSurfaces().empty());
}
