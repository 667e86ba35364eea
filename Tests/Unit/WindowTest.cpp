#include "Screens.h"

#include "AppKit/AppKit.h"

namespace {

class WindowTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        window.setContentView(content);
    }

    static WindowServer::Look look() { return screens().surfaces().back()->look; }

    std::shared_ptr<NSView> add(const CGColor& color, const std::shared_ptr<NSView>& above = {}) {
        const auto view = std::make_shared<NSView>(full);
        view->setWantsLayer(true);
        view->layer()->setBackgroundColor(color);
        above ? content->addSubview(view, NSWindowBelow, above) : content->addSubview(view);
        return view;
    }

    const NSRect full = CGRectMake(0, 0, 100, 50);
    const CGColor red{1, 0, 0, 1};
    const CGColor halfBlue{0, 0, 1, 0.5};
    NSWindow window{full, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, false};
    std::shared_ptr<NSView> content = std::make_shared<NSView>();
};

} // namespace

TEST_F(WindowTest, LaysTheColoursThatCoverItOverEachOther) {
    window.setBackgroundColor(NSColor::colorWithSRGBRed(0, 1, 0, 1));
    EXPECT_EQ(look().overlay, (CGColor{0, 1, 0, 1}));
    const auto front = add(halfBlue);
    EXPECT_EQ(look().overlay, (CGColor{0, 0.5, 0.5, 1}));
    const auto back = add(red, front);
    EXPECT_EQ(look().overlay, (CGColor{0.5, 0, 0.5, 1}));
    back->setFrame(CGRectMake(10, 0, 90, 50));
    EXPECT_EQ(look().overlay, (CGColor{0, 0.5, 0.5, 1}));
    back->setFrame(full);
    front->setHidden(true);
    EXPECT_EQ(look().overlay, red);
    front->setHidden(false);
    front->setWantsLayer(false);
    EXPECT_EQ(look().overlay, red);
}

TEST_F(WindowTest, AMaterialHidesWhatLiesBehindIt) {
    const auto tint = add(halfBlue);
    add(red, tint);
    content->addSubview(std::make_shared<NSVisualEffectView>(full), NSWindowBelow, tint);
    EXPECT_EQ(look(), (WindowServer::Look{true, halfBlue}));
    content->setHidden(true);
    EXPECT_EQ(look(), WindowServer::Look{});
}

TEST_F(WindowTest, AViewThatLeftTheWindowChangesNothingThere) {
    const auto tint = add(red);
    window.setContentView(std::make_shared<NSView>());
    EXPECT_EQ(tint->window(), nullptr);
    tint->layer()->setBackgroundColor(halfBlue);
    EXPECT_EQ(look(), WindowServer::Look{});
    content.reset(); // The tint outlives its superview.
    tint->setHidden(true);
}
