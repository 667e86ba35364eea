#pragma once

/// An sRGB colour with straight (not premultiplied) alpha; every component from 0 to 1.
struct CGColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;
    bool operator==(const CGColor&) const = default;
};
