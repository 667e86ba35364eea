#pragma once

#include "CoreGraphics/CGGeometry.h"
#include "WindowServer/PixelRect.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace WindowServer {

/// One connected monitor.
struct Display {
    uint32_t number = 0; ///< Stable across restarts and never shared by two connected displays.
    std::string name;    ///< The output's name, "DP-1".
    PixelRect pixels;
    double scale = 1;    ///< Device pixels in a point.
    CGRect frame;        ///< In points, y up, origin at the lower left of the first display.
    CGRect visibleFrame; ///< The frame less what panels keep free for themselves.
    bool operator==(const Display&) const = default;
};

/// The connected monitors.
class Displays {
public:
    virtual ~Displays() = default;

    /// The main one first. Empty while no monitor is on.
    virtual const std::vector<Display>& all() const = 0;

    /// The display that a frame belongs to: the one of that very frame, else the one that holds the
    /// frame's middle. Null where there is none.
    const Display* at(const CGRect& frame) const;

    /// Called after any of it has come to differ.
    std::function<void()> onChanged;
};

} // namespace WindowServer
