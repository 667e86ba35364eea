#include "WindowServer/Wayland/Windows/LayerSurface.h"

namespace WindowServer::Wayland {

LayerSurface::LayerSurface(const Connection& connection, wl_output* output, const char* kind,
                           Zone zone)
    : m_surface(connection.makeSurface()),
      m_role(zwlr_layer_shell_v1_get_layer_surface(connection.globals().layers, get(), output,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, kind)) {
    zwlr_layer_surface_v1_set_anchor(
        role(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                    ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_exclusive_zone(role(), static_cast<int>(zone));
    static const zwlr_layer_surface_v1_listener listener = {
        .configure = Tell<&LayerSurface::configure>(), .closed = Tell<&LayerSurface::close>()};
    zwlr_layer_surface_v1_add_listener(role(), &listener, this);
    connection.setInput(get(), {});
}

void LayerSurface::configure(uint32_t serial, uint32_t width, uint32_t height) {
    zwlr_layer_surface_v1_ack_configure(role(), serial);
    m_size = {static_cast<int>(width), static_cast<int>(height)};
    if (onTold) onTold();
}

void LayerSurface::close() {
    m_isClosed = true;
    if (onTold) onTold();
}

} // namespace WindowServer::Wayland
