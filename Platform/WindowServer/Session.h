// The connection to the window server: the screens, the surfaces that windows are made of, and the
// background blur. AppKit speaks to the screen through these classes alone; the X11 folder
// implements them on a real server.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CoreGraphics/CGColor.h"
#include "CoreGraphics/CGGeometry.h"

namespace WindowServer {

/// A rectangle in device pixels, y down, as the window server counts them.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;
};

/// One connected monitor.
struct Display {
    uint32_t number = 0; ///< Stable across restarts and never shared by two connected displays.
    std::string name;    ///< The output's name, "DP-1".
    PixelRect pixels;
    double scale = 1;    ///< Device pixels in a point.
    CGRect frame;        ///< In points, y up, origin at the lower left of the first display.
    CGRect visibleFrame; ///< The frame less what panels keep free for themselves.
    bool operator==(const Display&) const = default;
};

/// What a surface shows, back to front.
struct Look {
    bool material = false; ///< A blurred picture of what lies behind, taken as the surface appears.
    CGColor overlay;       ///< All layers of the window flattened into one colour.
    bool operator==(const Look&) const = default;
};

/// One native window without a frame of its own, drawn by the window server. It stands on the
/// screen while it is ordered front and its alpha is above 0. What changes within one turn of the
/// event loop reaches the screen together at the turn's end.
class Surface {
public:
    virtual ~Surface() = default;

    virtual int number() const = 0; ///< The window number, above 0; 0 where the server refused one.

    virtual void setTitle(const std::string& title) = 0;
    /// What kind of window it is, for everyone who looks at the screen.
    virtual void setIdentifier(const std::string&) {}
    virtual void setFrame(const CGRect& frame) = 0;
    virtual void setLevel(int level) = 0;
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    virtual void setAlpha(double alpha) = 0; ///< From 0 to 1.
    virtual void setLook(const Look& look) = 0;
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;
};

/// A key, known by its place on the keyboard whatever the layout makes of it, pressed while the
/// modifiers that are named are held and no others.
struct KeyChord {
    std::string place;  ///< As keyboard descriptions name it: "AB06", in the lowest row of letters.
    int kernelCode = 0; ///< The kernel's number for it, for servers that know no places.
    bool control = false;
    bool alt = false;
    bool super = false;
    bool operator==(const KeyChord&) const = default;
};

/// A window that the toolkit makes and draws, by its number at the server.
using ToolkitWindow = unsigned long;

/// A picture of a part of the screen, row by row, 0xRRGGBB.
struct Snapshot {
    PixelRect area; ///< In the pixels of the window it was taken around.
    std::vector<uint32_t> pixels;
};

/// How the tray on the server wants the icons that it takes.
struct TrayLook {
    bool translucent = false;    ///< They let its ground through.
    std::optional<uint32_t> ink; ///< The colour of symbols, 0xRRGGBB, where it tells.
};

class Session {
public:
    virtual ~Session() = default;

    /// Opens the session on the server that DISPLAY names, and has the toolkit use the same, before
    /// the application object exists. False where no server answers. One that was installed before
    /// is kept.
    static bool open();

    /// The open session.
    static Session& current();
    static void install(std::unique_ptr<Session> session);

    /// Joins the running application's event loop. Called once, when the application object exists.
    virtual void attach() = 0;

    /// The connected displays, the main one first. Empty while no monitor is on.
    virtual const std::vector<Display>& displays() const = 0;

    /// Called after `displays` has come to differ.
    std::function<void()> onDisplaysChanged;

    /// Whether a panel on the server itself takes status icons.
    virtual bool hasTray() const { return false; }

    virtual TrayLook trayLook() const { return {}; }

    /// Called after `hasTray` or `trayLook` has come to differ.
    std::function<void()> onTrayChanged;

    /// Takes a window that the toolkit shows off the screen and asks the tray to show it in itself.
    /// Calls back when it has. One is docked at a time.
    virtual void dock(ToolkitWindow, const std::function<void()>&) {}

    /// What the tray shows beneath a window that it took in, in the place of what the window
    /// showed. Empty where it does not tell.
    virtual Snapshot groundOfDocked(ToolkitWindow) { return {}; }

    /// Whether a compositor blends translucent windows with what lies behind them.
    virtual bool isComposited() const { return false; }

    /// Called after `isComposited` has come to differ.
    std::function<void()> onCompositingChanged;

    /// Whether covers hide all that stands on the screens and let all input through. Where they do
    /// not, none must be shown.
    virtual bool canBeCovered() const { return true; }

    /// The name of the theme that the desktop's own programs wear. Empty where nobody tells.
    virtual std::string themeName() const { return {}; }

    /// Called after `themeName` may have come to differ.
    std::function<void()> onThemeChanged;

    /// What the desktop multiplies sizes by, besides what the toolkit finds by itself.
    virtual int windowScale() const { return 1; }

    /// Takes the chord from all other programs for as long as the process runs. A session has one
    /// to give. False where another program has it already, or the keyboard has no such key.
    virtual bool grabKey(const KeyChord& chord) = 0;

    /// Called at each press of the grabbed chord; a key that is kept down is pressed once.
    std::function<void()> onKeyPressed;

    virtual std::unique_ptr<Surface> makeSurface() = 0;

    /// Called with true as the first surface comes to stand on the screen, with false as the last
    /// one has gone.
    std::function<void(bool)> onCovered;

    /// Lets blurs rest: their surfaces stand there plain and dark, also before the eyes of whoever
    /// wakes the machine, when this returns. Without rest live ones blur again, and still ones show
    /// the picture they had.
    virtual void setResting(bool) {}

    /// Gives a window of the toolkit's a place in the order of levels, in front of those that have
    /// the same one, until `dropLevel`.
    virtual void setLevel(ToolkitWindow, int level) = 0;
    virtual void dropLevel(ToolkitWindow) = 0;

    /// Called after another program took a window that has a level off the screen, or after it went
    /// on its own.
    std::function<void(ToolkitWindow)> onWindowGone;

    /// Whether a window manager places ordinary windows and hands the keyboard round.
    virtual bool hasWindowManager() const { return false; }

    /// Gives the keyboard to a window that no window manager cares for, until it is given back to
    /// the one that had it.
    virtual void takeKeyboard(ToolkitWindow) {}
    /// To be called while the window still stands on the screen. Leaves the keyboard where it is if
    /// someone has taken it since.
    virtual void giveKeyboardBack(ToolkitWindow) {}

    /// Names the window for everyone who looks at the screen.
    virtual void setName(ToolkitWindow, const std::string&) {}

    /// Keeps the window at this place and size, in points, whatever other programs do. False where
    /// the toolkit itself has to put it there.
    virtual bool place(ToolkitWindow, const CGRect&) { return false; }

    enum class Region { Bounding, Input };
    /// Limits what of the window is seen, or what of it takes input, to the rectangles, in its
    /// own pixels.
    virtual void setShape(ToolkitWindow, Region, const std::vector<PixelRect>&) {}

    /// Tells compositors that the window's outermost pixels, so many, are a shadow of its own.
    virtual void setShadowMargin(ToolkitWindow, int) {}

    /// What is seen of the window and of so many pixels around it. Empty where the server does not
    /// tell.
    virtual Snapshot grabAround(ToolkitWindow, int) { return {}; }

    /// Blurs what lies behind a surface with a Gaussian of standard deviation radius/2 points,
    /// live, while the surface is visible. A radius of 1 or less ends it. 0 on success; any other
    /// value is a refusal: no such surface, or a server that lacks what a live blur takes.
    virtual int setBackgroundBlurRadius(int surfaceNumber, int radius) = 0;
};

} // namespace WindowServer
