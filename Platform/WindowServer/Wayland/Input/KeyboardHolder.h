#pragma once

#include "WindowServer/Wayland/Desktop/Output.h"
#include "WindowServer/Wayland/Windows/Buffer.h"

namespace WindowServer::Wayland {

/// Has the keyboard for as long as it lives: a surface that nobody sees and that takes no clicks.
/// A stage that asked for the keyboard itself would not get rid of it on KWin.
class KeyboardHolder {
public:
    KeyboardHolder(const Connection& connection, const Output& output);

    const wl_surface* surface() const { return m_layer.get(); }
    /// Whether the compositor has taken it away, with its output.
    bool isClosed() const { return m_layer.isClosed(); }

private:
    LayerSurface m_layer;
    Buffers m_buffers;
    bool m_isShown = false;
};

} // namespace WindowServer::Wayland
