#pragma once

#include "WindowServer/Surfaces.h"
#include "WindowServer/Wayland/Blur/StillPicture.h"

#include <optional>

namespace WindowServer::Wayland {

/// One surface of the program's, and what there is to show in it.
class Cover : public Surface {
public:
    using Surface::Surface;

    bool wantsPicture() const {
        return wantsToShow() && look().material && look().overlay.alpha < 1;
    }

    /// Taken while the output was clear, and kept as long as it is covered.
    std::optional<StillPicture> picture;
    bool hasAskedForPicture = false; ///< Since it was shown last.
    bool isShown = false;
};

} // namespace WindowServer::Wayland
