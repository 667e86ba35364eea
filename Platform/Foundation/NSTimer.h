#pragma once

#include "Foundation/NSObject.h"

/// A block that runs once after a time. It lives while it is valid.
class NSTimer : public NSObject {
public:
    using Block = std::function<void(const std::shared_ptr<NSTimer>&)>;

    /// The interval is in seconds. None repeats here.
    static std::shared_ptr<NSTimer> scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                                   const Block& block);

    /// The block does not run any more.
    void invalidate() { m_alarm.reset(); }

private:
    std::shared_ptr<void> m_alarm; ///< Holds the timer while it is to ring.
};
