#pragma once

#include "AppKit/CAMediaTimingFunction.h"

#include <functional>
#include <memory>

/// One change that takes its time. It stops where it is when it is dropped.
class Animation {
public:
    /// Calls `apply` with a progress from 0 to 1 as the current animation context has it, the last
    /// time with just 1.
    explicit Animation(std::function<void(double)> apply);

private:
    void step();

    std::function<void(double)> m_apply;
    double m_duration;
    std::shared_ptr<CAMediaTimingFunction> m_pace;
    double m_start;
    std::shared_ptr<void> m_nextFrame;
};

/// The progress, from 0 to 1, at a part of the time, from 0 to 1. Null is an even pace.
double progressAt(double time, const CAMediaTimingFunction* pace);
