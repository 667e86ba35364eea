#include "WindowServer/Wayland/Input/Cursor.h"

namespace WindowServer::Wayland {

Cursor::Cursor(const Connection& connection)
    : m_connection(connection), m_surface(connection.makeSurface()) {}

void Cursor::show(wl_pointer* pointer, uint32_t serial, int scale) {
    if (m_scale != scale) {
        constexpr int usualSize = 24;
        const char* const size = std::getenv("XCURSOR_SIZE");
        const int points = size ? std::atoi(size) : 0;
        m_theme.reset(wl_cursor_theme_load(std::getenv("XCURSOR_THEME"),
                                           (points > 0 ? points : usualSize) * scale,
                                           m_connection.globals().shm));
        m_scale = scale;
    }
    const wl_cursor* cursor = nullptr;
    for (const char* name : {"default", "left_ptr"}) // As newer and older themes call it.
        if (m_theme && !cursor) cursor = wl_cursor_theme_get_cursor(m_theme.get(), name);
    if (!cursor) return;
    wl_cursor_image* const image = cursor->images[0];
    wl_surface_set_buffer_scale(m_surface.get(), scale);
    wl_surface_attach(m_surface.get(), wl_cursor_image_get_buffer(image), 0, 0);
    wl_surface_damage_buffer(m_surface.get(), 0, 0, static_cast<int>(image->width),
                             static_cast<int>(image->height));
    wl_surface_commit(m_surface.get());
    wl_pointer_set_cursor(pointer, serial, m_surface.get(),
                          static_cast<int>(image->hotspot_x) / scale,
                          static_cast<int>(image->hotspot_y) / scale);
}

} // namespace WindowServer::Wayland
