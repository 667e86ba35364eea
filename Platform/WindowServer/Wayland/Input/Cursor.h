#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <memory>

#include <wayland-cursor.h>

namespace WindowServer::Wayland {

/// The picture of the pointer while it is on a stage: the arrow, for nothing there needs another.
class Cursor {
public:
    explicit Cursor(const Connection& connection);

    void show(wl_pointer* pointer, uint32_t serial, int scale);

private:
    struct Destroy {
        void operator()(wl_cursor_theme* theme) const { wl_cursor_theme_destroy(theme); }
    };

    const Connection& m_connection;
    Owned<wl_surface> m_surface;
    std::unique_ptr<wl_cursor_theme, Destroy> m_theme;
    int m_scale = 0; ///< Of the theme.
};

} // namespace WindowServer::Wayland
