#pragma once

#include "WindowServer/Wayland/Output.h"

#include <QRect>

#include <functional>

namespace WindowServer::Wayland {

/// Learns what panels keep for themselves of an output: a layer surface that shows nothing, and
/// that the compositor keeps clear of them, is told how large it may be.
///
/// It is not told where. So as much is left free at the opposite side.
class PanelProbe {
public:
    PanelProbe(const Connection& connection, const Output& output);

    /// What panels leave, in the compositor's points.
    QRect free() const;

    std::function<void()> onChanged;

private:
    void configure(uint32_t serial, uint32_t width, uint32_t height);

    const Output& m_output;
    Owned<wl_surface> m_surface;
    Owned<zwlr_layer_surface_v1> m_layer;
    QSize m_room; ///< Empty while it is not known.
};

} // namespace WindowServer::Wayland
