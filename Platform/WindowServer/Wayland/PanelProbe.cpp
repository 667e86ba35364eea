#include "WindowServer/Wayland/PanelProbe.h"

#include "WindowServer/Wayland/Layer.h"

#include <algorithm>

namespace WindowServer::Wayland {

PanelProbe::PanelProbe(const Connection& connection, const Output& output)
    : m_output(output), m_surface(connection.makeSurface()),
      m_layer(makeLayer(connection, m_surface.get(), output, "probe", Zone::KeepsClear)) {
    static const zwlr_layer_surface_v1_listener listener = {
        .configure = Tell<&PanelProbe::configure>(), .closed = Ignored()};
    zwlr_layer_surface_v1_add_listener(m_layer.get(), &listener, this);
    wl_surface_commit(m_surface.get());
}

void PanelProbe::configure(uint32_t serial, uint32_t width, uint32_t height) {
    zwlr_layer_surface_v1_ack_configure(m_layer.get(), serial);
    const QSize room(static_cast<int>(width), static_cast<int>(height));
    if (std::exchange(m_room, room) != room && onChanged) onChanged();
}

QRect PanelProbe::free() const {
    const QRect whole = m_output.place();
    if (m_room.isEmpty()) return whole;
    const int aside = std::max(whole.width() - m_room.width(), 0);
    const int above = std::max(whole.height() - m_room.height(), 0);
    return whole.adjusted(aside, above, -aside, -above);
}

} // namespace WindowServer::Wayland
