#include "Foundation/NSTimer.h"

#include "Foundation/Timeline+Private.h"

#include <QElapsedTimer>
#include <QTimer>

namespace {

class EventLoopTimeline : public Timeline {
public:
    EventLoopTimeline() { m_clock.start(); }
    double now() const override { return static_cast<double>(m_clock.nsecsElapsed()) / 1e9; }

    std::shared_ptr<void> schedule(double seconds, std::function<void()> work) override {
        // It may be dropped from within its own work.
        const auto cancel = [](QTimer* timer) {
            timer->stop();
            timer->deleteLater();
        };
        std::shared_ptr<QTimer> timer(new QTimer, cancel);
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(timer.get(), &QTimer::timeout, timer.get(), std::move(work));
        timer->start(static_cast<int>(seconds * 1000));
        return timer;
    }

private:
    QElapsedTimer m_clock;
};

std::unique_ptr<Timeline> theTimeline;

} // namespace

Timeline& Timeline::current() {
    if (!theTimeline) theTimeline = std::make_unique<EventLoopTimeline>();
    return *theTimeline;
}

void Timeline::install(std::unique_ptr<Timeline> timeline) { theTimeline = std::move(timeline); }

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, bool,
                                                                 const Block& block) {
    const auto timer = std::make_shared<NSTimer>();
    timer->m_alarm = Timeline::current().schedule(interval, [timer, block] {
        const auto [self, run] = std::pair(timer, block); // The alarm may take this with it.
        self->invalidate();
        run(self);
    });
    return timer;
}
