#include "Screens.h"

#include "Cover.h"

#include <algorithm>

using WindowServer::HeadlessSurface;

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
    for (int round = 0; round < 2; ++round)
        for (const bool shown : {false, false, true, true}) {
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

    const std::tuple<const char*, std::vector<WindowServer::Display>, int> cases[] = {
        {"one more", added, 3},
        {"one less", {twoScreens()[0]}, 3},
        {"it comes back", twoScreens(), 4},
        {"moved and resized", moved, 4},
        {"none", {}, 4},
        {"all come back", twoScreens(), 6},
    };
    for (const bool shown : {true, false}) {
        restart();
        if (shown) cover->show();
        posts = 0;
        for (const auto& [change, displays, windows] : cases) {
            SCOPED_TRACE(change);
            screens().setDisplays(displays);
            EXPECT_EQ(cover->shown(), shown);
            EXPECT_EQ(windowsMade(), windows);
            expectAll(shown);
        }
        EXPECT_EQ(posts, 0);
    }
}

TEST_F(CoverTest, AScreenWithoutANumberGetsNoWindow) {
    screens().setDisplays({twoScreens()[0], display(0, CGRectMake(1920, 0, 100, 100))});
    cover->show();
    ASSERT_EQ(screens().surfaces().size(), 1u);
    EXPECT_EQ(screens().surfaces().front()->frame, twoScreens()[0].frame);
}

TEST_F(CoverTest, ARefusedBlurBringsUpOneMaterialBehindTheTintOfItsWindow) {
    CoverWindow window;
    const HeadlessSurface& surface = *screens().surfaces().back();
    const CGRect larger = CGRectMake(0, 0, 1920, 1080);
    for (const int answer : {1006, 1006, 0, 1006}) {
        screens().blurAnswer = answer;
        window.dress();
        window.setFrame(larger, false);
        EXPECT_EQ(surface.look, (WindowServer::Look{answer != 0, CGColor{0, 0, 0, 0.4}}));
        EXPECT_EQ(window.contentView()->subviews().size(), 2u);
    }
    for (const auto* each : screens().surfaces())
        EXPECT_EQ(each->look.material, each == &surface);
}

TEST_F(CoverTest, ARefusedBlurLeavesNothingBehind) {
    screens().blurAnswer = 1006;
    cover->show();
    EXPECT_TRUE(screens().surfaces().front()->look.material);
    cover->hide();
    EXPECT_EQ(screens().surfaces().front()->look, WindowServer::Look{});
}

TEST_F(CoverTest, ObserversOfACoverThatIsGoneDoNothing) {
    cover->show();
    cover = nullptr;
    screens().setDisplays({});
    NSWorkspace::sharedWorkspace().notificationCenter().postNotificationName(
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr);
    EXPECT_TRUE(screens().surfaces().empty());
}
