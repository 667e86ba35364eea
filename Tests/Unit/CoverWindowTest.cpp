#include "Screens.h"

#include "Cover.h"

using WindowServer::HeadlessSurface;

namespace {

const CGColor tint{0, 0, 0, 0.4};

class CoverWindowTest : public ScreensTest {
protected:
    HeadlessSurface& surface() { return *screens().surfaces().back(); }

    /// The fallback, where the window has made one: it lies behind the tint.
    std::shared_ptr<NSVisualEffectView> fallback() {
        return std::dynamic_pointer_cast<NSVisualEffectView>(
            window.contentView()->subviews().front());
    }

    CoverWindow window;
};

} // namespace

TEST_F(CoverWindowTest, ARefusedBlurBringsUpOneMaterialBehindTheTint) {
    window.setFrame(CGRectMake(0, 0, 1920, 1080), false);
    screens().blurAnswer = 1006;
    window.dress();
    window.dress();
    EXPECT_EQ(window.contentView()->subviews().size(), 2u);
    const auto made = fallback();
    ASSERT_TRUE(made);
    EXPECT_EQ(made->frame(), window.contentView()->bounds());
    EXPECT_EQ(surface().look, (WindowServer::Look{.material = true, .overlay = tint}));

    window.setFrame(CGRectMake(0, 0, 640, 480), false);
    EXPECT_EQ(made->frame(), CGRectMake(0, 0, 640, 480));

    screens().blurAnswer = 0;
    window.dress();
    EXPECT_TRUE(made->isHidden());
    EXPECT_EQ(fallback(), made);
    EXPECT_EQ(surface().look, (WindowServer::Look{.material = false, .overlay = tint}));

    screens().blurAnswer = 1006;
    window.dress();
    EXPECT_FALSE(made->isHidden());
    EXPECT_EQ(window.contentView()->subviews().size(), 2u);
}

TEST_F(CoverWindowTest, ARefusalLeavesOtherWindowsAlone) {
    const auto refusedNumber = surface().number();
    CoverWindow other;
    screens().blurAnswer = 1006;
    window.dress();
    screens().blurAnswer = 0;
    other.dress();
    for (const auto* each : screens().surfaces())
        EXPECT_EQ(each->look.material, each->number() == refusedNumber);
}
