#pragma once

#include "Harness/Desktop.h"
#include "Harness/TestWindow.h"

#include <cmath>

#include <gtest/gtest.h>

namespace Harness {

/// A window of one colour over all of the desktop and below everything else.
struct Paper : TestWindow {
    explicit Paper(const Desktop& desktop, uint32_t colour = white)
        : TestWindow(desktop.display(), desktop.screen.bounds()) {
        paint(colour);
        lower();
        show();
    }

    /// That the cover over this area is alive: it comes to show another colour of the paper's, and
    /// then white again.
    void expectShownThrough(const Screen& screen, const Area& area) {
        for (const uint32_t colour : {black, white}) {
            paint(colour);
            const double expected = colour == white ? 153 : 0; // Under the dark glass.
            EXPECT_SOON(std::abs(screen.grab(area).mean() - expected) < 6)
                << area << " has stayed at " << screen.grab(area).mean();
        }
    }
};

} // namespace Harness
