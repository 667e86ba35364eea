#pragma once

#include "Foundation/NSObject.h"

/// A block that runs once after a time, or again and again. It lives while it is valid.
class NSTimer : public NSObject, public std::enable_shared_from_this<NSTimer> {
public:
    using Block = std::function<void(const std::shared_ptr<NSTimer>&)>;

    /// The interval is in seconds.
    static std::shared_ptr<NSTimer> scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                                   Block block);

    /// The block does not run any more.
    void invalidate() { m_alarm.reset(); }

private:
    NSTimer(double interval, bool repeats, Block block)
        : m_interval(interval), m_repeats(repeats), m_block(std::move(block)) {}

    void schedule();
    void fire();

    double m_interval;
    bool m_repeats;
    Block m_block;
    std::shared_ptr<void> m_alarm; ///< Holds the timer while it is to ring.
};
