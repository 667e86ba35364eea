#pragma once

#include "Foundation/NSObject.h"

#include <memory>
#include <string>

using CAMediaTimingFunctionName = std::string;

/// Quick at first, slower and slower towards the end.
inline const CAMediaTimingFunctionName kCAMediaTimingFunctionEaseOut = "easeOut";

/// The pace of an animation.
class CAMediaTimingFunction : public NSObject {
public:
    /// Null for a name that the platform does not have.
    static std::shared_ptr<CAMediaTimingFunction>
    functionWithName(const CAMediaTimingFunctionName& name);

    /// The progress, from 0 to 1, at a part of the time, from 0 to 1.
    double progressAt(double time) const;

private:
    CAMediaTimingFunction() = default;
};
