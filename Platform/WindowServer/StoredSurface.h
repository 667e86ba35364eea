#pragma once

#include "WindowServer/Surfaces.h"

#include <utility>

namespace WindowServer {

/// A surface that keeps what it is told, for others to carry out.
class StoredSurface : public Surface {
public:
    StoredSurface(int number, std::function<void()> changed,
                  std::function<void(const StoredSurface&)> gone)
        : m_number(number), m_changed(std::move(changed)), m_gone(std::move(gone)) {}
    ~StoredSurface() override { m_gone(*this); }

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
    int radius() const { return m_radius; }
    bool wantsToShow() const { return m_isOrdered && m_alpha > 0; }

private:
    template <class T> void change(T& member, const T& value) {
        if (std::exchange(member, value) != value) m_changed();
    }

    const int m_number;
    const std::function<void()> m_changed;
    const std::function<void(const StoredSurface&)> m_gone;
    CGRect m_frame;
    double m_alpha = 1;
    Look m_look;
    bool m_isOrdered = false;
    int m_radius = 0;
};

} // namespace WindowServer
