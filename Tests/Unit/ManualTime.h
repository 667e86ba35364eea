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

    /// How many alarms are to ring.
    int pending() const {
        return static_cast<int>(std::count_if(m_alarms.begin(), m_alarms.end(),
                                              [](const auto& a) { return a.lock(); }));
    }

    /// Rings all that is due in these seconds, in its order.
    void advance(double seconds) {
        const double end = m_now + seconds;
        while (const auto alarm = takeNext(end)) {
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

    std::shared_ptr<Alarm> takeNext(double end) {
        std::shared_ptr<Alarm> next;
        for (const auto& each : m_alarms)
            if (const auto alarm = each.lock(); alarm && (!next || alarm->when < next->when))
                next = alarm;
        if (!next || next->when > end) return nullptr;
        std::erase_if(m_alarms, [&](const auto& each) { return each.lock() == next; });
        return next;
    }

    double m_now = 0;
    std::vector<std::weak_ptr<Alarm>> m_alarms;
};
