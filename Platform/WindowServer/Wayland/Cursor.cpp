#include "WindowServer/Wayland/Cursor.h"

#include <cstdlib>
#include <initializer_list>

namespace WindowServer::Wayland {

namespace {

constexpr int usualSize = 24;

/// The names that themes have for a shape, best first.
std::initializer_list<const char*> namesOf(Qt::CursorShape shape) {
    static const auto arrow = {"default", "left_ptr"};
    static const auto hand = {"pointer", "hand2", "hand1", "left_ptr"};
    static const auto beam = {"text", "xterm", "left_ptr"};
    if (shape == Qt::PointingHandCursor) return hand;
    return shape == Qt::IBeamCursor ? beam : arrow;
}

} // namespace

Cursor::Cursor(const Connection& connection)
    : m_connection(connection), m_surface(connection.makeSurface()) {}

void Cursor::show(wl_pointer* pointer, uint32_t serial, Qt::CursorShape shape, int scale) {
    if (m_scale != scale) {
        const char* const size = std::getenv("XCURSOR_SIZE");
        const int points = size ? std::atoi(size) : 0;
        m_theme.reset(wl_cursor_theme_load(std::getenv("XCURSOR_THEME"),
                                           (points > 0 ? points : usualSize) * scale,
                                           m_connection.globals().shm));
        m_scale = scale;
    }
    const wl_cursor* cursor = nullptr;
    for (const char* name : namesOf(shape))
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
