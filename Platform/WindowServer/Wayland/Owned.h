#pragma once

#include "WindowServer/Wayland/Protocols.h"

#include <memory>

namespace WindowServer::Wayland {

/// Gives an object back to the compositor by the request that its kind has for that.
struct GiveBack {
    void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
    void operator()(wl_callback* object) const { wl_callback_destroy(object); }
    void operator()(wl_keyboard* object) const { wl_keyboard_release(object); }
    void operator()(wl_output* object) const { wl_output_destroy(object); }
    void operator()(wl_pointer* object) const { wl_pointer_release(object); }
    void operator()(wl_region* object) const { wl_region_destroy(object); }
    void operator()(wl_seat* object) const { wl_seat_release(object); }
    void operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }
    void operator()(wl_subsurface* object) const { wl_subsurface_destroy(object); }
    void operator()(wl_surface* object) const { wl_surface_destroy(object); }
    void operator()(wl_touch* object) const { wl_touch_release(object); }
    void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
    void operator()(wp_fractional_scale_v1* object) const {
        wp_fractional_scale_v1_destroy(object);
    }
    void operator()(zwlr_layer_surface_v1* object) const { zwlr_layer_surface_v1_destroy(object); }
    void operator()(zwlr_screencopy_frame_v1* object) const {
        zwlr_screencopy_frame_v1_destroy(object);
    }
    void operator()(zxdg_output_v1* object) const { zxdg_output_v1_destroy(object); }
    void operator()(ext_background_effect_surface_v1* object) const {
        ext_background_effect_surface_v1_destroy(object);
    }
    void operator()(org_kde_kwin_blur* object) const { org_kde_kwin_blur_release(object); }
};

template <class T> using Owned = std::unique_ptr<T, GiveBack>;

} // namespace WindowServer::Wayland
