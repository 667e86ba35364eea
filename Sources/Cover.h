// The blurred, darkened sheet over every screen.
#pragma once

#include "AppKit/AppKit.h"
#include "Foundation/Foundation.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

/// What a screen is known by; none where the platform gives it no number.
std::optional<uint32_t> displayNumber(const NSScreen& screen);

/// The colours of the sheet.
namespace Scrim {
const NSColor& tint();  ///< The dark glass over the blur.
const NSColor& solid(); ///< The opaque cover where transparency is not wanted.
} // namespace Scrim

/// The sheet over one screen. Clicks, scrolling and typing go to what lies underneath.
class CoverWindow : public NSWindow {
public:
    CoverWindow();

    /// Puts on what the sheet shows while it is on: the window server's blur, or else a material of
    /// the platform, and the tint; or a solid colour alone where transparency is to be reduced.
    void dress();

    bool canBecomeKeyWindow() const override { return false; }
    bool canBecomeMainWindow() const override { return false; }

private:
    friend class Cover;

    void showFallback();

    const std::shared_ptr<NSView> tint = std::make_shared<NSView>();
    std::shared_ptr<NSVisualEffectView> fallback; ///< Made at the first blur that is refused.
};

/// The one state of the program, whether the screens are covered, and a window on each screen.
class Cover : public std::enable_shared_from_this<Cover> {
public:
    static const std::shared_ptr<Cover>& shared();

    /// Posted, with the instance as its object, when every window has changed with `shown`.
    inline static const NSNotificationName changed = "NimbrelLite.coverChanged";

    bool shown() const { return m_shown; }

    /// Makes the windows and follows the screens from here on. Called once.
    void start();

    void show();
    void hide();

private:
    void syncScreens();
    void restyle();

    bool m_shown = false;
    std::map<uint32_t, std::shared_ptr<CoverWindow>> windows; ///< By display number.
};
