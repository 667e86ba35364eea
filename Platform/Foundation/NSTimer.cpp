#include "Foundation/NSTimer.h"

#include "Foundation/Timeline+Private.h"

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                                 Block block) {
    const std::shared_ptr<NSTimer> timer(new NSTimer(interval, repeats, std::move(block)));
    timer->schedule();
    return timer;
}

void NSTimer::schedule() {
    m_alarm =
        Timeline::current().schedule(m_interval, [self = shared_from_this()] { self->fire(); });
}

void NSTimer::fire() {
    const auto self = shared_from_this();
    if (m_repeats)
        schedule();
    else
        invalidate();
    m_block(self);
}
