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
    }

    void restart() {
        screens().setDisplays(twoScreens());
        cover = std::make_shared<Cover>();
        m_surfacesBefore = screens().surfacesMade();
        cover->start();
    }

    int windowsMade() const { return screens().surfacesMade() - m_surfacesBefore; }

    const HeadlessSurface* surfaceAt(const CGRect& frame) const {
        const auto& all = screens().surfaces();
        const auto found = std::ranges::find(all, frame, &HeadlessSurface::frame);
        return found == all.end() ? nullptr : *found;
    }

    void expectAll(double alpha, int radius) const {
        EXPECT_EQ(screens().surfaces().size(), NSScreen::screens().size());
        for (const auto& screen : NSScreen::screens()) {
            const auto* surface = surfaceAt(screen->frame());
            ASSERT_TRUE(surface);
            EXPECT_TRUE(surface->ordered);
            EXPECT_EQ(surface->alpha, alpha);
            EXPECT_EQ(surface->radius, radius);
            EXPECT_EQ(surface->look.overlay.alpha, alpha * 0.4);
        }
    }
    void expectOn() const { expectAll(1, 168); }
    void expectOff() const { expectAll(0, 1); }

    std::shared_ptr<Cover> cover;

private:
    int m_surfacesBefore = 0;
};

} // namespace

TEST_F(CoverTest, TogglesWithoutMakingWindows) {
    const PostCounter posts(Cover::changed);
    expectOff();
    for (int round = 0; round < 2; ++round)
        for (const bool shown : {false, false, true, true}) {
            shown ? cover->show() : cover->hide();
            EXPECT_EQ(cover->shown(), shown);
            shown ? expectOn() : expectOff();
        }
    EXPECT_EQ(posts.count(), 3) << "one for each change";
    EXPECT_EQ(windowsMade(), 2);
    EXPECT_EQ(posts.objects().front(), cover);
}

TEST_F(CoverTest, AnnouncesItselfWhenAllWindowsHaveChanged) {
    const std::weak_ptr<Cover> observed = cover;
    int checks = 0;
    NSNotificationCenter::defaultCenter().addObserverForName(
        Cover::changed, nullptr, NSOperationQueue::mainQueue(), [=, &checks](const auto& note) {
            if (observed.expired() || note.object() != observed.lock()) return;
            ++checks;
            for (const auto* surface : screens().surfaces())
                EXPECT_EQ(surface->alpha, observed.lock()->shown() ? 1 : 0);
        });
    cover->show();
    cover->hide();
    EXPECT_EQ(checks, 2);
    cover.reset();
}

TEST_F(CoverTest, ChangesOfTheScreensKeepTheState) {
    const auto third = display(11, CGRectMake(-800, 0, 800, 600));
    auto moved = twoScreens();
    moved[1].frame = CGRectMake(0, 1080, 1600, 900);
    auto added = twoScreens();
    added.push_back(third);

    struct Case {
        const char* change;
        std::vector<WindowServer::Display> displays;
        int windowsMade;
    };
    const Case cases[] = {
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
        const PostCounter posts(Cover::changed);
        for (const auto& [change, displays, windows] : cases) {
            SCOPED_TRACE(change);
            screens().setDisplays(displays);
            EXPECT_EQ(cover->shown(), shown);
            EXPECT_EQ(windowsMade(), windows);
            shown ? expectOn() : expectOff();
        }
        EXPECT_EQ(posts.count(), 0);
    }
}

TEST_F(CoverTest, AScreenWithoutANumberGetsNoWindow) {
    screens().setDisplays({twoScreens()[0], display(0, CGRectMake(1920, 0, 100, 100))});
    cover->show();
    ASSERT_EQ(screens().surfaces().size(), 1u);
    EXPECT_EQ(screens().surfaces().front()->frame, twoScreens()[0].frame);
}

TEST_F(CoverTest, ARefusedBlurIsCoveredByAMaterialUntilItIsHidden) {
    screens().blurAnswer = 1006;
    cover->show();
    for (const auto* surface : screens().surfaces())
        EXPECT_TRUE(surface->alpha == 1 && surface->look.material);
    cover->hide();
    for (const auto* surface : screens().surfaces())
        EXPECT_EQ(surface->look, WindowServer::Look{});
}

TEST_F(CoverTest, IsDressedAnewForContrastWhileItIsOnAlone) {
    const PostCounter posts(Cover::changed);
    screens().setThemeName("HighContrast");
    expectOff();
    cover->show();
    for (const auto* surface : screens().surfaces())
        EXPECT_TRUE(surface->look.overlay == Scrim::solid().CGColor() && surface->radius == 1);
    screens().setThemeName("Adwaita");
    expectOn();
    EXPECT_EQ(posts.count(), 1);
}

TEST_F(CoverTest, ObserversOfACoverThatIsGoneDoNothing) {
    cover->show();
    cover = nullptr;
    EXPECT_TRUE(screens().surfaces().empty());
    screens().setDisplays({});
    NSWorkspace::sharedWorkspace().notificationCenter().postNotificationName(
        NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification, nullptr);
    EXPECT_TRUE(screens().surfaces().empty());
}
