#include "WindowServer/Wayland/KeyboardHolder.h"

#include "WindowServer/Wayland/Layer.h"

#include <utility>

namespace WindowServer::Wayland {

KeyboardHolder::KeyboardHolder(const Connection& connection, const Output& output)
    : m_surface(connection.makeSurface()),
      m_layer(makeLayer(connection, m_surface.get(), output, "keyboard", Zone::IgnoresPanels)),
      m_buffers(connection) {
    constexpr uint32_t exclusive = 1;
    zwlr_layer_surface_v1_set_anchor(m_layer.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP |
                                                        ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT);
    zwlr_layer_surface_v1_set_size(m_layer.get(), 1, 1);
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_layer.get(), exclusive);
    static const zwlr_layer_surface_v1_listener listener = {
        .configure = Tell<&KeyboardHolder::show>(), .closed = Tell<&KeyboardHolder::close>()};
    zwlr_layer_surface_v1_add_listener(m_layer.get(), &listener, this);
    connection.setInput(m_surface.get(), {});
    wl_surface_commit(m_surface.get());
}

void KeyboardHolder::show(uint32_t serial, uint32_t, uint32_t) {
    zwlr_layer_surface_v1_ack_configure(m_layer.get(), serial);
    if (std::exchange(m_isShown, true)) return;
    Buffer* const buffer = m_buffers.take({1, 1});
    if (!buffer) return;
    Buffers::imageOf(*buffer).fill(Qt::transparent);
    buffer->attach(m_surface.get());
    wl_surface_commit(m_surface.get());
}

} // namespace WindowServer::Wayland
