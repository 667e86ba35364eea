#pragma once

#include "QuartzCore/QuartzCore.h"

/// How the changes that are made through an animator run.
class NSAnimationContext : public NSObject {
public:
    /// The group's that is being run; outside of any, one that nobody has changed.
    static NSAnimationContext& currentContext();

    /// Calls `changes` with a context of its own. Returns before the animations have run.
    static void runAnimationGroup(const std::function<void(NSAnimationContext&)>& changes);

    /// Seconds.
    double duration() const { return m_duration; }
    void setDuration(double duration) { m_duration = duration; }

    /// Null for an even pace.
    const std::shared_ptr<CAMediaTimingFunction>& timingFunction() const {
        return m_timingFunction;
    }
    void setTimingFunction(std::shared_ptr<CAMediaTimingFunction> function) {
        m_timingFunction = std::move(function);
    }

private:
    double m_duration = 0.25;
    std::shared_ptr<CAMediaTimingFunction> m_timingFunction;
};
