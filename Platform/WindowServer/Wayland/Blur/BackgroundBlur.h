#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <QSize>

namespace WindowServer::Wayland {

/// The compositor's blur of what is behind a surface, by the one or the other of its protocols for
/// that. What is set is seen from the surface's next commit on.
class BackgroundBlur {
public:
    explicit BackgroundBlur(const Connection& connection) : m_connection(connection) {}

    /// Whether the compositor can do it at present.
    static bool isOffered(const Globals& globals);

    /// The size is in the surface's points; an empty one is no blur.
    void set(wl_surface* surface, const QSize& size);

private:
    void setEffect(wl_surface* surface, const QSize& size);
    void setPlasmaBlur(wl_surface* surface, bool blurs);

    const Connection& m_connection;
    Owned<ext_background_effect_surface_v1> m_effect;
    Owned<org_kde_kwin_blur> m_plasmaBlur; ///< That of Plasma before its release 6.7.
};

} // namespace WindowServer::Wayland
