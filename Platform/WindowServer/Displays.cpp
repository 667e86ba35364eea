#include "WindowServer/Displays.h"

#include <algorithm>

namespace WindowServer {

const Display* Displays::at(const CGRect& frame) const {
    const auto same = std::ranges::find(all(), frame, &Display::frame);
    if (same != all().end()) return &*same;
    const CGPoint middle{CGRectGetMidX(frame), CGRectGetMidY(frame)};
    const auto holder = std::ranges::find_if(
        all(), [&](const Display& display) { return CGRectContainsPoint(display.frame, middle); });
    return holder == all().end() ? nullptr : &*holder;
}

} // namespace WindowServer
