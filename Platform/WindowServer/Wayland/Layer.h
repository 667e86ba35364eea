#pragma once

#include "WindowServer/Wayland/Output.h"

namespace WindowServer::Wayland {

/// How a layer surface stands to the panels, who say how much of the screen they keep.
enum class Zone { KeepsClear = 0, IgnoresPanels = -1 };

/// Makes a surface one that fills an output, in the layer above all windows.
inline Owned<zwlr_layer_surface_v1> makeLayer(const Connection& connection, wl_surface* surface,
                                              const Output& output, const char* kind, Zone zone) {
    Owned<zwlr_layer_surface_v1> layer(
        zwlr_layer_shell_v1_get_layer_surface(connection.globals().layers, surface, output.get(),
                                              ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, kind));
    zwlr_layer_surface_v1_set_anchor(
        layer.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                         ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), static_cast<int>(zone));
    return layer;
}

} // namespace WindowServer::Wayland
