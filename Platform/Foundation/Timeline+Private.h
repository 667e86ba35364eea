#pragma once

#include <functional>
#include <memory>

/// Where timers and animations take their time from: the event loop, or a test's own clock.
class Timeline {
public:
    virtual ~Timeline() = default;

    static Timeline& current();
    /// Null for the event loop's.
    static void install(std::unique_ptr<Timeline> timeline);

    virtual double now() const = 0; ///< In seconds, from any start.

    /// Runs `work` once, so many seconds from now, unless the result is dropped before.
    virtual std::shared_ptr<void> schedule(double seconds, std::function<void()> work) = 0;
};
