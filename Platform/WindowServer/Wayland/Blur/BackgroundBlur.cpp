#include "WindowServer/Wayland/Blur/BackgroundBlur.h"

namespace WindowServer::Wayland {

bool BackgroundBlur::isOffered(const Globals& globals) {
    if (globals.effects)
        return (globals.offeredEffects & EXT_BACKGROUND_EFFECT_MANAGER_V1_CAPABILITY_BLUR) != 0;
    return globals.blur != nullptr;
}

void BackgroundBlur::set(wl_surface* surface, const QSize& size) {
    if (m_connection.globals().effects)
        setEffect(surface, size);
    else
        setPlasmaBlur(surface, !size.isEmpty());
}

void BackgroundBlur::setEffect(wl_surface* surface, const QSize& size) {
    if (size.isEmpty()) return m_effect.reset();
    if (!m_effect)
        m_effect.reset(ext_background_effect_manager_v1_get_background_effect(
            m_connection.globals().effects, surface));
    ext_background_effect_surface_v1_set_blur_region(m_effect.get(),
                                                     regionOf(m_connection, QRect({}, size)).get());
}

void BackgroundBlur::setPlasmaBlur(wl_surface* surface, bool blurs) {
    auto* const manager = m_connection.globals().blur;
    if (manager && blurs == (m_plasmaBlur != nullptr)) return;
    m_plasmaBlur.reset();
    if (!manager) return;
    if (!blurs) return org_kde_kwin_blur_manager_unset(manager, surface);
    m_plasmaBlur.reset(org_kde_kwin_blur_manager_create(manager, surface));
    org_kde_kwin_blur_set_region(m_plasmaBlur.get(), nullptr); // All of it.
    org_kde_kwin_blur_commit(m_plasmaBlur.get());
}

} // namespace WindowServer::Wayland
