#pragma once

#include "Harness/Desktop.h"
#include "Harness/TestWindow.h"

namespace Harness {

/// A window of one colour over all of the desktop and below everything else.
struct Paper : TestWindow {
    explicit Paper(const Desktop& desktop, uint32_t colour = white)
        : TestWindow(desktop.display(), desktop.screen.bounds()) {
        paint(colour);
        lower();
        show();
    }
};

} // namespace Harness
