// A clock that a test moves by hand.
#pragma once

#include "Foundation/Timeline+Private.h"

#include <algorithm>
#include <vector>

class ManualTime : public Timeline {
public:
    /// Puts a new one in place of the event loop's time.
    static ManualTime& install() {
        auto time = std::make_unique<ManualTime>();
        ManualTime& result = *time;
        Timeline::install(std::move(time));
        return result;
    }

    /// An alarm and the timer that waits for it hold one another until it rings.
    ~ManualTime() override {
        for (const auto& each : m_alarms)
            if (const auto alarm = each.lock()) alarm->work = nullptr;
    }

    double now() const override { return m_now; }

    std::shared_ptr<void> schedule(double seconds, std::function<void()> work) override {
        const auto alarm = std::make_shared<Alarm>(m_now + seconds, std::move(work));
        m_alarms.push_back(alarm);
        return alarm;
    }

    /// Rings all that is due in these seconds, in its order.
    void advance(double seconds) {
        const double end = m_now + seconds;
        for (;;) {
            std::erase_if(m_alarms, std::not_fn(isSet));
            const auto next = std::ranges::min_element(
                m_alarms, {}, [](const auto& each) { return each.lock()->when; });
            if (next == m_alarms.end() || next->lock()->when > end) break;
            const auto alarm = next->lock();
            m_alarms.erase(next);
            m_now = alarm->when;
            alarm->work();
        }
        m_now = end;
    }

private:
    struct Alarm {
        Alarm(double at, std::function<void()> what) : when(at), work(std::move(what)) {}
        double when;
        std::function<void()> work;
    };
    static bool isSet(const std::weak_ptr<Alarm>& alarm) { return !alarm.expired(); }

    double m_now = 0;
    std::vector<std::weak_ptr<Alarm>> m_alarms;
};
