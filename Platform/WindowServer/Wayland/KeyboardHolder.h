#pragma once

#include "WindowServer/Wayland/Buffer.h"
#include "WindowServer/Wayland/Output.h"

namespace WindowServer::Wayland {

/// Has the keyboard for as long as it lives: a surface that nobody sees and that takes no clicks.
/// A stage that asked for the keyboard itself would not get rid of it on KWin.
class KeyboardHolder {
public:
    KeyboardHolder(const Connection& connection, const Output& output);

    const wl_surface* surface() const { return m_surface.get(); }
    /// Whether the compositor has taken it away, with its output.
    bool isClosed() const { return m_isClosed; }

private:
    void show(uint32_t serial, uint32_t width, uint32_t height);
    void close() { m_isClosed = true; }

    Owned<wl_surface> m_surface;
    Owned<zwlr_layer_surface_v1> m_layer;
    Buffers m_buffers;
    bool m_isShown = false;
    bool m_isClosed = false;
};

} // namespace WindowServer::Wayland
