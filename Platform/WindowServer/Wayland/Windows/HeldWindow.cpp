#include "WindowServer/Wayland/Windows/HeldWindow.h"

#include <cmath>

namespace WindowServer::Wayland {

void HeldWindow::setLevel(int level) {
    m_level = level;
    m_changed();
}

void HeldWindow::setShadowMargin(int pixels) {
    m_shadow = pixels;
    m_changed();
}

void HeldWindow::setShape(Region region, const std::vector<PixelRect>& rectangles) {
    if (region != Region::Input) return; // Here every window is as translucent as it is drawn.
    m_input = rectangles;
    m_changed();
}

void HeldWindow::takeKeyboard() {
    static unsigned lastTurn = 0;
    m_keyboardTurn = ++lastTurn;
    m_changed();
}

QRegion HeldWindow::input(QSize size, double scale) const {
    const QRect whole({}, size);
    if (!m_input) {
        const int shadow = static_cast<int>(std::lround(m_shadow / scale));
        return whole.marginsRemoved({shadow, shadow, shadow, shadow});
    }
    QRegion region;
    for (const PixelRect& each : *m_input)
        region += QRectF(each.x / scale, each.y / scale, each.width / scale, each.height / scale)
                      .toAlignedRect();
    return region & whole;
}

} // namespace WindowServer::Wayland
