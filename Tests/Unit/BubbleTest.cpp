#include "ManualTime.h"
#include "Screens.h"

#include "Bubble.h"
#include "Cover.h"
#include "Prefs.h"

class BubbleTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        for (const uint32_t number : {7u, 9u})
            Prefs::shared().setButtonSpot(number, 1.0, 0.62);
        bubble->start();
    }
    void TearDown() override {
        Cover::shared()->hide();
        bubble = nullptr;
        Timeline::install(nullptr);
        ScreensTest::TearDown();
    }

    BubblePanel& panel() { return *bubble->panels().at(7); }

    /// One screen, number 7, that leaves the rectangle to its windows.
    void useScreen(const CGRect& visibleFrame) {
        auto only = display(7, CGRectMake(0, 0, 1440, 900));
        only.visibleFrame = visibleFrame;
        screens().setDisplays({only});
    }

    void drop(const NSPoint& origin) {
        panel().setFrameOrigin(origin);
        panel().button->onMoved();
    }

    void expectOrigin(const NSPoint& expected, const char* name = "") {
        EXPECT_NEAR(panel().frame().origin.x, expected.x, 1e-9) << name;
        EXPECT_NEAR(panel().frame().origin.y, expected.y, 1e-9) << name;
    }

    ManualTime& time = ManualTime::install();
    std::shared_ptr<Bubble> bubble = std::make_shared<Bubble>();
};

TEST_F(BubbleTest, PlacesEachButtonFromItsStoredSpot) {
    struct Case {
        const char* name;
        CGRect visibleFrame;
        ButtonSpot spot;
        NSPoint origin;
    };
    for (const auto& [name, visibleFrame, spot, origin] : {
             Case{"untouched", {{0, 0}, {1440, 875}}, {1.0, 0.62}, {1390, 317.22}},
             Case{"just left", {{0, 0}, {1440, 875}}, {0.49, 0.0}, {6, 825}},
             Case{"just right", {{0, 0}, {1440, 875}}, {0.5, 0.0}, {1390, 825}},
             Case{"taken as stored", {{0, 0}, {1440, 875}}, {7.0, 1.5}, {1390, -403.5}},
             Case{"panels around", {{50, 30}, {1300, 800}}, {0.0, 1.0}, {56, 36}},
             Case{"too low for it", {{0, 0}, {1440, 40}}, {1.0, 0.62}, {1390, -10}},
         }) {
        Prefs::shared().setButtonSpot(7, spot.side, spot.down);
        screens().setDisplays({});
        useScreen(visibleFrame);
        expectOrigin(origin, name);
    }
}

TEST_F(BubbleTest, SettlesAtTheNearerSideOfItsOwnScreen) {
    useScreen(CGRectMake(0, 0, 1440, 875)); // The area is (6, 6) to (1434, 869).
    struct Case {
        const char* name;
        NSPoint dropped;
        NSPoint origin;
    };
    for (const auto& [name, dropped, origin] : {
             Case{"left half", {300, 400}, {6, 400}},
             Case{"on the middle line", {698, 400}, {1390, 400}},
             Case{"just left of it", {697.9, 400}, {6, 400}},
             Case{"above", {300, 4000}, {6, 825}},
             Case{"below", {300, -4000}, {6, 6}},
             Case{"on the next screen", {2500, 100}, {1390, 100}},
             Case{"on the one before", {-2500, 100}, {6, 100}},
         }) {
        drop(dropped);
        const ButtonSpot stored = Prefs::shared().buttonSpot(7);
        EXPECT_EQ(stored.side, origin.x == 6 ? 0 : 1) << name;
        EXPECT_NEAR(stored.down, (825 - origin.y) / (863 - 44), 1e-9) << name;
        time.advance(0.2);
        expectOrigin(origin, name);
        // A button made anew stands where the former one came to rest.
        bubble->start();
        expectOrigin(origin, name);
    }
}

TEST_F(BubbleTest, SlidesQuicklyAtFirst) {
    useScreen(CGRectMake(0, 0, 1440, 875));
    drop({300, 400});
    expectOrigin({300, 400});
    time.advance(0.08);
    const double half = (300 - panel().frame().origin.x) / (300 - 6);
    EXPECT_GT(half, 0.55);
    EXPECT_LT(half, 0.8);
    time.advance(0.09);
    expectOrigin({6, 400});
    time.advance(10);
    EXPECT_EQ(time.pending(), 0);
}

TEST_F(BubbleTest, ATooLowScreenStoresTheMiddle) {
    useScreen(CGRectMake(0, 0, 1440, 40));
    drop({300, 400});
    time.advance(1);
    expectOrigin({6, -10});
    EXPECT_EQ(Prefs::shared().buttonSpot(7), (ButtonSpot{0.0, 0.5}));
}

TEST_F(BubbleTest, StaysWhereItWasDroppedWithoutAHome) {
    useScreen(CGRectMake(0, 0, 1440, 875));
    for (const std::optional<uint32_t> home : {std::optional<uint32_t>(), {12345}}) {
        panel().home = home;
        drop({300, 400});
        time.advance(1);
        expectOrigin({300, 400});
        EXPECT_EQ(Prefs::shared().buttonSpot(7), (ButtonSpot{1.0, 0.62}));
    }
}

TEST_F(BubbleTest, EveryScreenWithANumberHasOne) {
    auto displays = twoScreens();
    displays.push_back(display(0, CGRectMake(0, 1080, 800, 600)));
    screens().setDisplays(displays);
    ASSERT_EQ(bubble->panels().size(), 2u);
    for (const auto& [number, each] : bubble->panels())
        EXPECT_EQ(each->home, number);
    screens().setDisplays({});
    EXPECT_TRUE(bubble->panels().empty());
}

TEST_F(BubbleTest, AChangeOfScreensMakesAllAnew) {
    const std::weak_ptr<BubblePanel> former = bubble->panels().at(7);
    time.advance(10);
    ASSERT_LT(panel().alphaValue(), 1.0);
    Cover::shared()->show();
    screens().setDisplays({display(7, CGRectMake(0, 0, 1920, 1080))});
    EXPECT_TRUE(former.expired());
    EXPECT_TRUE(panel().button->blurred());
    time.advance(10);
    EXPECT_EQ(panel().alphaValue(), 1.0);
}

TEST_F(BubbleTest, AClickTogglesAndAllFollow) {
    for (const bool shown : {true, false}) {
        panel().button->onClick();
        EXPECT_EQ(Cover::shared()->shown(), shown);
        for (const auto& [number, each] : bubble->panels())
            EXPECT_EQ(each->button->accessibilityLabel(),
                      shown ? "Show the screens" : "Blur every screen");
    }
}

TEST_F(BubbleTest, CallbacksOutliveTheirOwner) {
    const auto orphan = bubble->panels().at(7);
    bubble = nullptr;
    orphan->button->onMoved();
    orphan->button->rightMouseDown(NSEvent(NSEventTypeRightMouseDown, 0));
    screens().setDisplays({});
}
