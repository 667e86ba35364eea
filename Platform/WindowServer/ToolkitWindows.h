#pragma once

#include "CoreGraphics/CGGeometry.h"
#include "WindowServer/PixelRect.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace WindowServer {

/// A window that the toolkit makes and draws, by its number at the server.
using WindowId = unsigned long;

/// A picture of a part of the screen, row by row, 0xRRGGBB.
struct Snapshot {
    PixelRect area; ///< In the pixels of the window it was taken around.
    std::vector<uint32_t> pixels;
};

/// What the toolkit does not do for a window of its own. Level, place, shapes and the keyboard are
/// held as long as the object lives, which is to go before the window leaves the screen.
class ToolkitWindow {
public:
    virtual ~ToolkitWindow() = default;

    /// Names it for everyone who looks at the screen.
    virtual void setName(const std::string&) {}

    /// Tells compositors that its outermost pixels, so many, are a shadow of its own.
    virtual void setShadowMargin(int) {}

    /// Gives it a place in the order of levels, in front of those that have the same one. From
    /// level 1000 on it is seen above all windows of other programs.
    virtual void setLevel(int) {}

    /// Keeps it at this place and size, in points, whatever other programs do. False where the
    /// toolkit itself has to put it there.
    virtual bool place(const CGRect&) { return false; }

    enum class Region { Bounding, Input };
    /// Limits what of it is seen, or what of it takes input, to the rectangles, in its own pixels.
    virtual void setShape(Region, const std::vector<PixelRect>&) {}

    /// Gives it the keyboard where no window manager does, until the object goes and the one that
    /// had the keyboard gets it back; it stays where it is if someone has taken it since.
    virtual void takeKeyboard() {}

    /// What is seen of it and of so many pixels around it. Empty where the server does not tell.
    virtual Snapshot grabAround(int) { return {}; }

    /// Called after another program took it off the screen while it had a level.
    std::function<void()> onGone;
};

/// How the toolkit's windows stand among those of other programs.
class ToolkitWindows {
public:
    virtual ~ToolkitWindows() = default;

    /// The same object for all who hold one window.
    virtual std::shared_ptr<ToolkitWindow> hold(WindowId window) = 0;

    /// Whether a window manager places ordinary windows and hands the keyboard round.
    virtual bool hasManager() const { return false; }

    /// Whether translucent windows are blended with what lies behind them.
    virtual bool areComposited() const { return false; }

    /// Called after `areComposited` has come to differ.
    std::function<void()> onCompositingChanged;
};

} // namespace WindowServer
