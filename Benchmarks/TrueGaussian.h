#pragma once

#include <vector>

namespace Benchmarks {

/// One channel of a picture, row after row.
struct Plane {
    int width = 0;
    int height = 0;
    std::vector<double> values;
};

/// The blur by its definition, with the edge pixels continued outwards; `deviation` in pixels.
Plane trueGaussian(const Plane& plane, double deviation);

} // namespace Benchmarks
