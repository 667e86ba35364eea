#pragma once

#include "Foundation/NSObject.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>

using CAMediaTimingFunctionName = std::string;

/// Quick at first, slower and slower towards the end.
inline const CAMediaTimingFunctionName kCAMediaTimingFunctionEaseOut = "easeOut";

/// The pace of an animation: a cubic Bezier curve from (0, 0) to (1, 1) of progress over time.
class CAMediaTimingFunction : public NSObject {
public:
    /// Null for a name that the platform does not have.
    static std::shared_ptr<CAMediaTimingFunction>
    functionWithName(const CAMediaTimingFunctionName& name);

    /// The points are 0 to 3, the curve's start and end included.
    void getControlPointAtIndex(size_t index, float (&values)[2]) const;

private:
    using Points = std::array<std::array<float, 2>, 4>;

    explicit CAMediaTimingFunction(const Points& points) : m_points(points) {}

    Points m_points;
};
