#pragma once

#include "WindowServer/Surfaces.h"
#include "WindowServer/Wayland/StillPicture.h"

#include <functional>
#include <optional>

namespace WindowServer::Wayland {

/// One surface of the program's: what it was told, for the covers to carry out.
class Cover : public Surface {
public:
    Cover(int number, std::function<void()> changed, std::function<void(Cover&)> gone)
        : m_number(number), m_changed(std::move(changed)), m_gone(std::move(gone)) {}
    ~Cover() override { m_gone(*this); }

    int number() const override { return m_number; }
    void setTitle(const std::string&) override {}
    void setFrame(const CGRect& frame) override { change(m_frame, frame); }
    void setLevel(int) override {}
    void setIgnoresMouseEvents(bool) override {}
    void setAlpha(double alpha) override { change(m_alpha, alpha); }
    void setLook(const Look& look) override { change(m_look, look); }
    void orderFront() override { change(m_isOrdered, true); }
    void orderOut() override { change(m_isOrdered, false); }
    void setRadius(int radius) { change(m_radius, radius); }

    const CGRect& frame() const { return m_frame; }
    const Look& look() const { return m_look; }
    bool wantsToShow() const { return m_isOrdered && m_alpha > 0; }
    bool wantsLiveBlur() const { return m_radius > 1 && m_look.overlay.alpha < 1; }
    bool wantsPicture() const {
        return wantsToShow() && m_look.material && m_look.overlay.alpha < 1;
    }

    /// Taken while the output was clear, and kept as long as it is covered.
    std::optional<StillPicture> picture;
    bool hasAskedForPicture = false; ///< Since it was shown last.
    bool isShown = false;

private:
    template <class T> void change(T& member, const T& value) {
        if (member == value) return;
        member = value;
        m_changed();
    }

    const int m_number;
    const std::function<void()> m_changed;
    const std::function<void(Cover&)> m_gone;
    CGRect m_frame;
    double m_alpha = 1;
    Look m_look;
    bool m_isOrdered = false;
    int m_radius = 0;
};

} // namespace WindowServer::Wayland
