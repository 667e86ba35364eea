#include "WindowServer/Wayland/Input/KeyboardHolder.h"

#include <utility>

namespace WindowServer::Wayland {

KeyboardHolder::KeyboardHolder(const Connection& connection, const Output& output)
    : m_layer(connection, output.get(), "keyboard", Zone::IgnoresPanels), m_buffers(connection) {
    constexpr uint32_t exclusive = 1;
    zwlr_layer_surface_v1_set_anchor(m_layer.role(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP |
                                                         ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT);
    zwlr_layer_surface_v1_set_size(m_layer.role(), 1, 1);
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_layer.role(), exclusive);
    m_layer.onTold = [this] {
        if (isClosed() || std::exchange(m_isShown, true)) return;
        Buffer* const buffer = m_buffers.take({1, 1});
        if (!buffer) return;
        buffer->image().fill(Qt::transparent);
        buffer->attach(m_layer.get());
        wl_surface_commit(m_layer.get());
    };
    wl_surface_commit(m_layer.get());
}

} // namespace WindowServer::Wayland
