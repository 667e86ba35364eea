#pragma once

#include "CoreGraphics/CGColor.h"
#include "CoreGraphics/CGGeometry.h"

#include <functional>
#include <memory>
#include <string>

namespace WindowServer {

// What the window server's calls return where they refuse.
constexpr int illegalArgument = 1001;
constexpr int notImplemented = 1006;

/// The standard deviation, in points, of the material's blur: as strong as the strongest background
/// blur that windows ask for.
constexpr double materialDeviation = 84;

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

/// What it takes to have screens covered that are not yet.
enum class Remedy {
    None,        ///< Another session.
    Consent,     ///< The user's word, once.
    Setting,     ///< A setting of the desktop's, for the user has said no before.
    NextLogin,   ///< The user has agreed, and has to log out and in.
    OtherVersion ///< Another version of the desktop.
};

/// What covers are made of, and how they get their blur.
class Surfaces {
public:
    virtual ~Surfaces() = default;

    virtual std::unique_ptr<Surface> makeSurface() = 0;

    /// Whether surfaces hide all that stands on the screens and let all input through. Where they
    /// do not, none must be shown.
    virtual bool canCover() const { return true; }
    virtual Remedy remedy() const { return Remedy::None; }
    /// What the user has answered where consent was the remedy. False where it helps only from the
    /// next login on.
    virtual bool allow(bool /*allowed*/) { return true; }

    /// Blurs what lies behind a surface with a Gaussian of standard deviation radius/2 points,
    /// live, while the surface is visible. A radius of 1 or less ends it. 0 on success; any other
    /// value is a refusal: no such surface, or a server that lacks what a live blur takes.
    virtual int setBackgroundBlurRadius(int surfaceNumber, int radius) = 0;

    /// Lets blurs rest: their surfaces stand there plain and dark, also before the eyes of whoever
    /// wakes the machine, when this returns. Without rest live ones blur again, and still ones show
    /// the picture they had.
    virtual void setResting(bool) {}

    /// Called with true as the first surface comes to stand on the screen, with false as the last
    /// one has gone.
    std::function<void(bool)> onCovered;
};

} // namespace WindowServer
