#include "Screens.h"

#include "AppKit/AppKit.h"

TEST_F(ScreensTest, AWindowLaysItsViewsColoursOverEachOtherInFrontOfItsMaterial) {
    const NSRect full = CGRectMake(0, 0, 100, 50);
    const CGColor red{1, 0, 0, 1}, halfBlue{0, 0, 1, 0.5};
    NSWindow window{full, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, false};
    auto content = std::make_shared<NSView>();
    window.setContentView(content);
    const auto add = [&](const CGColor& color, const std::shared_ptr<NSView>& above = {}) {
        const auto view = std::make_shared<NSView>(full);
        view->setWantsLayer(true);
        view->layer()->setBackgroundColor(color);
        above ? content->addSubview(view, NSWindowBelow, above) : content->addSubview(view);
        return view;
    };
    const auto look = [] { return screens().surfaces().back()->look; };

    window.setBackgroundColor(NSColor::colorWithSRGBRed(0, 1, 0, 1));
    const auto front = add(halfBlue);
    EXPECT_EQ(look().overlay, (CGColor{0, 0.5, 0.5, 1}));
    const auto back = add(red, front);
    EXPECT_EQ(look().overlay, (CGColor{0.5, 0, 0.5, 1}));
    back->setFrame(CGRectMake(10, 0, 90, 50)); // It covers a part alone.
    EXPECT_EQ(look().overlay, (CGColor{0, 0.5, 0.5, 1}));
    back->setFrame(full);
    front->setHidden(true);
    EXPECT_EQ(look().overlay, red);
    front->setHidden(false);
    content->addSubview(std::make_shared<NSVisualEffectView>(full), NSWindowBelow, front);
    EXPECT_EQ(look(), (WindowServer::Look{true, halfBlue})) << "it hides what lies behind it";

    window.setBackgroundColor(NSColor::clearColor());
    window.setContentView(std::make_shared<NSView>());
    EXPECT_EQ(front->window(), nullptr);
    front->layer()->setBackgroundColor(red);
    EXPECT_EQ(look(), WindowServer::Look{});
    content.reset(); // The view outlives its superview.
    front->setHidden(true);
}
