#pragma once

#include <functional>
#include <memory>

/// The event loop's time, which timers and animations go by.
namespace Timeline {

double now(); ///< In seconds, from any start.

/// Runs `work` once, so many seconds from now, unless the result is dropped before.
std::shared_ptr<void> schedule(double seconds, std::function<void()> work);

} // namespace Timeline
