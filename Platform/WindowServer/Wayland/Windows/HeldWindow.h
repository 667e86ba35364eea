#pragma once

#include "WindowServer/ToolkitWindows.h"

#include <QRegion>

#include <functional>
#include <optional>

namespace WindowServer::Wayland {

/// What the program wants of a window of its own, for the stages to carry out.
class HeldWindow : public ToolkitWindow {
public:
    explicit HeldWindow(std::function<void()> changed) : m_changed(std::move(changed)) {}
    ~HeldWindow() override { m_changed(); }

    void setLevel(int level) override;
    void setShadowMargin(int pixels) override;
    void setShape(Region region, const std::vector<PixelRect>& rectangles) override;
    void takeKeyboard() override;

    int level() const { return m_level; }
    /// Of a window of that size in points, with so many pixels in each.
    QRegion input(QSize size, double scale) const;
    /// When it asked for the keyboard, in turns that count up. 0 where it does not.
    unsigned keyboardTurn() const { return m_keyboardTurn; }
    void dropKeyboard() { m_keyboardTurn = 0; }

private:
    std::function<void()> m_changed;
    int m_level = 0;
    int m_shadow = 0;
    std::optional<std::vector<PixelRect>> m_input;
    unsigned m_keyboardTurn = 0;
};

} // namespace WindowServer::Wayland
