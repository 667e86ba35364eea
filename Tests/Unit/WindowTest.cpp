#include "Screens.h"

#include "AppKit/AppKit.h"

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

TEST_F(WindowTest, LaysItsColoursOverEachOther) {
    window.setBackgroundColor(NSColor::colorWithSRGBRed(0, 1, 0, 1));
    EXPECT_EQ(surface().look.overlay, (CGColor{0, 1, 0, 1}));
    window.setContentView(content);
    const auto front = layered(full, halfBlue);
    content->addSubview(front);
    EXPECT_EQ(surface().look.overlay, (CGColor{0, 0.5, 0.5, 1}));
    content->addSubview(layered(full, red), NSWindowBelow, front);
    EXPECT_EQ(surface().look.overlay, (CGColor{0.5, 0, 0.5, 1}));
    front->setHidden(true);
    EXPECT_EQ(surface().look.overlay, red);
    front->setHidden(false);
    front->setWantsLayer(false);
    EXPECT_EQ(surface().look.overlay, red);
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

TEST_F(WindowTest, AChangeOfScreensIsPostedOnce) {
    const PostCounter posts(NSApplicationDidChangeScreenParametersNotification);
    screens().setDisplays(twoScreens());
    EXPECT_EQ(posts.count(), 0);
    screens().setDisplays({});
    EXPECT_EQ(posts.count(), 1);
}
