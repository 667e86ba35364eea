#pragma once

#include "CoreGraphics/CGColor.h"
#include "CoreGraphics/CGGeometry.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

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
    CGColor overlay;       ///< What the window's layers lay over that.
    bool operator==(const Look&) const = default;
};

/// One window without a frame of its own, drawn by the window server, which lets all input through.
/// It stands on the screen while it is ordered front and its alpha is above 0. It keeps what it is
/// told; what changes within one turn of the event loop is carried out together at the turn's end.
class Surface {
public:
    Surface(int number, std::function<void()> onChanged, std::function<void(const Surface&)> onGone)
        : m_number(number), m_onChanged(std::move(onChanged)), m_onGone(std::move(onGone)) {}
    virtual ~Surface() { m_onGone(*this); }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    int number() const { return m_number; } ///< The window number, above 0.

    void setTitle(const std::string& title) { set(m_title, title); }
    /// What kind of window it is, for everyone who looks at the screen.
    void setIdentifier(const std::string& identifier) { set(m_identifier, identifier); }
    void setFrame(const CGRect& frame) { set(m_frame, frame); }
    void setLevel(int level) { set(m_level, level); }
    void setAlpha(double alpha) { set(m_alpha, alpha); } ///< From 0 to 1.
    void setLook(const Look& look) { set(m_look, look); }
    void setRadius(int radius) { set(m_radius, radius); } ///< Of the blur of what lies behind.
    void orderFront() { set(m_isOrdered, true); }
    void orderOut() { set(m_isOrdered, false); }

    const std::string& title() const { return m_title; }
    const std::string& identifier() const { return m_identifier; }
    const CGRect& frame() const { return m_frame; }
    int level() const { return m_level; }
    const Look& look() const { return m_look; }
    int radius() const { return m_radius; }
    bool isOrdered() const { return m_isOrdered; }
    bool wantsToShow() const { return m_isOrdered && m_alpha > 0; }
    bool wantsLiveBlur() const { return wantsToShow() && m_radius > 1 && m_look.overlay.alpha < 1; }

protected:
    virtual void changed() { m_onChanged(); }

private:
    template <class T> void set(T& member, const T& value) {
        if (std::exchange(member, value) != value) changed();
    }

    const int m_number;
    const std::function<void()> m_onChanged;
    const std::function<void(const Surface&)> m_onGone;
    std::string m_title;
    std::string m_identifier;
    CGRect m_frame;
    int m_level = 0;
    double m_alpha = 1;
    Look m_look;
    int m_radius = 0;
    bool m_isOrdered = false;
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
