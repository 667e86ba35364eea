#include "Screens.h"

#include "AppKit/AppKit.h"

#include <cmath>

using WindowServer::HeadlessSurface;

namespace {

class WindowTest : public ScreensTest {
protected:
    HeadlessSurface& surface() { return *screens().surfaces().back(); }

    std::shared_ptr<NSView> layered(const NSRect& frame, const CGColor& color) {
        auto view = std::make_shared<NSView>(frame);
        view->setWantsLayer(true);
        view->layer()->setBackgroundColor(color);
        return view;
    }

    const NSRect full = CGRectMake(0, 0, 100, 50);
    const CGColor red{1, 0, 0, 1};
    const CGColor halfBlue{0, 0, 1, 0.5};
    NSWindow window{full, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, false};
    std::shared_ptr<NSView> content = std::make_shared<NSView>();
};

} // namespace

TEST_F(WindowTest, TellsTheWindowServerWhatItIs) {
    window.setTitle("A title");
    window.setLevel(3);
    window.setIgnoresMouseEvents(true);
    window.setFrame(CGRectMake(1, 2, 30, 40), false);
    window.setAlphaValue(7);
    EXPECT_EQ(window.windowNumber(), surface().number());
    EXPECT_EQ(surface().title, "A title");
    EXPECT_EQ(surface().level, 3);
    EXPECT_TRUE(surface().ignoresMouseEvents);
    EXPECT_EQ(surface().frame, CGRectMake(1, 2, 30, 40));
    EXPECT_EQ(surface().alpha, 1);
    EXPECT_FALSE(surface().ordered);
    window.orderFrontRegardless();
    EXPECT_TRUE(surface().ordered);
    window.orderOut(nullptr);
    EXPECT_FALSE(surface().ordered);
}

TEST_F(WindowTest, LeavesTheScreenWithItsLastReference) {
    const auto before = screens().surfaces().size();
    { NSWindow other(full, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, false); }
    EXPECT_EQ(screens().surfaces().size(), before);
}

TEST_F(WindowTest, LaysItsColoursOverEachOther) {
    window.setBackgroundColor(NSColor::colorWithSRGBRed(0, 1, 0, 1));
    EXPECT_EQ(surface().look.overlay, (CGColor{0, 1, 0, 1}));
    window.setContentView(content);
    content->addSubview(layered(full, red));
    const auto front = layered(full, halfBlue);
    content->addSubview(front);
    EXPECT_EQ(surface().look.overlay, (CGColor{0.5, 0, 0.5, 1}));
    front->setHidden(true);
    EXPECT_EQ(surface().look.overlay, red);
    front->setHidden(false);
    front->setWantsLayer(false);
    EXPECT_EQ(surface().look.overlay, red);
}

TEST_F(WindowTest, KeepsTheColourOfOneTranslucentLayer) {
    window.setContentView(content);
    content->addSubview(layered(full, halfBlue));
    EXPECT_EQ(surface().look.overlay, halfBlue);
}

TEST_F(WindowTest, LeavesOutAViewThatDoesNotCoverIt) {
    window.setContentView(content);
    const auto part = layered(CGRectMake(10, 0, 90, 50), red);
    content->addSubview(part);
    EXPECT_EQ(surface().look.overlay, CGColor{});
    part->setFrame(full);
    EXPECT_EQ(surface().look.overlay, red);
}

TEST_F(WindowTest, AMaterialHidesWhatLiesBehindIt) {
    window.setContentView(content);
    const auto tint = layered(full, halfBlue);
    content->addSubview(tint);
    content->addSubview(layered(full, red), NSWindowBelow, tint);
    const auto material = std::make_shared<NSVisualEffectView>(full);
    content->addSubview(material, NSWindowBelow, tint);
    EXPECT_EQ(content->subviews()[1], material);
    EXPECT_TRUE(surface().look.material);
    EXPECT_EQ(surface().look.overlay, halfBlue);
    content->setHidden(true);
    EXPECT_EQ(surface().look, WindowServer::Look{});
}

TEST_F(WindowTest, AViewThatLeftTheWindowChangesNothingThere) {
    window.setContentView(content);
    const auto tint = layered(full, red);
    content->addSubview(tint);
    window.setContentView(std::make_shared<NSView>());
    EXPECT_EQ(surface().look, WindowServer::Look{});
    EXPECT_EQ(tint->window(), nullptr);
    tint->layer()->setBackgroundColor(halfBlue);
    EXPECT_EQ(surface().look, WindowServer::Look{});
    content.reset(); // The tint outlives its superview.
    tint->setHidden(true);
}

TEST_F(WindowTest, ViewsFollowTheirSuperviewByTheirMasks) {
    struct Case {
        NSUInteger mask;
        NSRect expected;
    };
    for (const auto& [mask, expected] : {
             Case{NSViewNotSizable, CGRectMake(5, 5, 20, 20)},
             Case{NSViewWidthSizable, CGRectMake(5, 5, 120, 20)},
             Case{NSViewHeightSizable, CGRectMake(5, 5, 20, 10)},
             Case{NSViewWidthSizable | NSViewHeightSizable, CGRectMake(5, 5, 120, 10)},
         }) {
        NSView parent(full);
        const auto child = std::make_shared<NSView>(CGRectMake(5, 5, 20, 20));
        child->setAutoresizingMask(mask);
        parent.addSubview(child);
        parent.setFrame(CGRectMake(50, 50, 200, 40));
        EXPECT_EQ(child->frame(), expected) << "mask " << mask;
    }
}

TEST_F(WindowTest, ScreensTellTheirNumbersAndFrames) {
    auto displays = twoScreens();
    displays.push_back(display(0, CGRectMake(0, 1080, 10, 10)));
    screens().setDisplays(displays);
    const auto found = NSScreen::screens();
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[1]->frame(), displays[1].frame);
    const auto& number = found[1]->deviceDescription().at("NSScreenNumber");
    EXPECT_EQ(std::dynamic_pointer_cast<NSNumber>(number)->unsignedIntValue(), 9u);
    EXPECT_TRUE(found[2]->deviceDescription().empty());
}

TEST_F(WindowTest, AChangeOfScreensIsPostedOnce) {
    const PostCounter posts(NSApplicationDidChangeScreenParametersNotification);
    screens().setDisplays(twoScreens());
    EXPECT_EQ(posts.count(), 0);
    screens().setDisplays({});
    EXPECT_EQ(posts.count(), 1);
}
