#include "QuartzCore/Animation+Private.h"

#include "Foundation/Timeline+Private.h"

namespace {
constexpr double frameSeconds = 1.0 / 60;
}

Animation::Animation(double duration, std::shared_ptr<CAMediaTimingFunction> pace,
                     std::function<void(double)> apply)
    : m_duration(duration), m_pace(std::move(pace)), m_apply(std::move(apply)),
      m_start(Timeline::current().now()) {
    m_nextFrame = Timeline::current().schedule(0, [this] { step(); });
}

void Animation::step() {
    const double elapsed = Timeline::current().now() - m_start;
    if (elapsed >= m_duration) {
        m_nextFrame.reset();
        m_apply(1);
        return;
    }
    m_nextFrame = Timeline::current().schedule(frameSeconds, [this] { step(); });
    const double time = elapsed / m_duration;
    m_apply(m_pace ? m_pace->progressAt(time) : time);
}
