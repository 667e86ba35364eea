#pragma once

#include "QuartzCore/QuartzCore.h"

/// One change that takes its time. It stops where it is when it is dropped.
class Animation {
public:
    /// Calls `apply` with a progress from 0 to 1, the last time with just 1. The duration is in
    /// seconds; no pace is an even one.
    Animation(double duration, std::shared_ptr<CAMediaTimingFunction> pace,
              std::function<void(double)> apply);

private:
    void step();

    const double m_duration;
    const std::shared_ptr<CAMediaTimingFunction> m_pace;
    const std::function<void(double)> m_apply;
    const double m_start;
    std::shared_ptr<void> m_nextFrame;
};
