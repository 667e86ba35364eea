// Everything that the program stores for itself.
#pragma once

#include "Foundation/Foundation.h"

#include <cstdint>

/// Where the floating button of one screen sits.
struct ButtonSpot {
    double side = 1;    ///< Below 0.5 the left edge of the screen, else the right one.
    double down = 0.62; ///< 0 at the top of the edge, 1 at its bottom.
    bool operator==(const ButtonSpot&) const = default;
};

class Prefs {
public:
    static Prefs& shared();

    /// The stored spot of a screen, just as it was stored; the default one where nothing usable is.
    ButtonSpot buttonSpot(uint32_t on) const;
    void setButtonSpot(uint32_t on, double side, double down);

    NSUserDefaults& d = NSUserDefaults::standardUserDefaults();

private:
    Prefs();
};
