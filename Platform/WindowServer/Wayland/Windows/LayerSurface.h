#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <QSize>

#include <functional>

namespace WindowServer::Wayland {

/// How a layer surface stands to the panels, who say how much of the screen they keep.
enum class Zone { KeepsClear = 0, IgnoresPanels = -1 };

/// A surface that fills an output, in the layer above all windows. Once it is committed it is told
/// a size, and with a picture it is seen.
class LayerSurface {
public:
    LayerSurface(const Connection& connection, wl_output* output, const char* kind, Zone zone);

    wl_surface* get() const { return m_surface.get(); }
    zwlr_layer_surface_v1* role() const { return m_role.get(); }
    QSize size() const { return m_size; } ///< Empty until it is told.
    /// Whether the compositor has taken it away, with its output.
    bool isClosed() const { return m_isClosed; }

    /// Called as it is told a size, and as it is closed.
    std::function<void()> onTold;

private:
    void configure(uint32_t serial, uint32_t width, uint32_t height);
    void close();

    Owned<wl_surface> m_surface;
    Owned<zwlr_layer_surface_v1> m_role;
    QSize m_size;
    bool m_isClosed = false;
};

} // namespace WindowServer::Wayland
