#include "Foundation/NSTimer.h"

#include "Foundation/Timeline+Private.h"

#include <QElapsedTimer>
#include <QTimer>

double Timeline::now() {
    static const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return static_cast<double>(clock.nsecsElapsed()) / 1e9;
}

std::shared_ptr<void> Timeline::schedule(double seconds, std::function<void()> work) {
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

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double interval, bool repeats,
                                                                 Block block) {
    const std::shared_ptr<NSTimer> timer(new NSTimer(interval, repeats, std::move(block)));
    timer->schedule();
    return timer;
}

void NSTimer::schedule() {
    m_alarm = Timeline::schedule(m_interval, [self = shared_from_this()] { self->fire(); });
}

void NSTimer::fire() {
    const auto self = shared_from_this();
    if (m_repeats)
        schedule();
    else
        invalidate();
    m_block(self);
}
