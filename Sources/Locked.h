// What the paid edition adds, and the two places that tell of it: an alert about one feature and a
// window about all of them.
#pragma once

#include "LockedFeature.h"

#include <optional>
#include <string>
#include <vector>

namespace Locked {

extern const std::vector<LockedFeature> all;

std::optional<LockedFeature> feature(const std::string& wanted);

/// Tells of the feature in an alert above everything, and returns when that has been answered.
void show(const LockedFeature& feature);

/// Brings the edition window to the front. It is made once and stays where it was left.
void showSummit();

} // namespace Locked
