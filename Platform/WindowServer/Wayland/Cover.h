#pragma once

#include "WindowServer/StoredSurface.h"
#include "WindowServer/Wayland/StillPicture.h"

#include <optional>

namespace WindowServer::Wayland {

/// One surface of the program's, and what there is to show in it.
class Cover : public StoredSurface {
public:
    using StoredSurface::StoredSurface;

    bool wantsLiveBlur() const { return radius() > 1 && look().overlay.alpha < 1; }
    bool wantsPicture() const {
        return wantsToShow() && look().material && look().overlay.alpha < 1;
    }

    /// Taken while the output was clear, and kept as long as it is covered.
    std::optional<StillPicture> picture;
    bool hasAskedForPicture = false; ///< Since it was shown last.
    bool isShown = false;
};

} // namespace WindowServer::Wayland
