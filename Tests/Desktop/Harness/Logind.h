#pragma once

#include "Harness/Service.h"
#include "Harness/SessionBus.h"

#include <QDBusUnixFileDescriptor>

#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace Harness {

/// The keeper of the machine's sleep, on a system bus of its own.
class Logind : public SessionBus, public Service {
public:
    Logind() : Service(address(), "org.freedesktop.login1") {}
    ~Logind() override { ::close(m_delay); }

    void announce(bool sleeps) const {
        Service::announce("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                          "PrepareForSleep", {sleeps});
    }

    /// Whether somebody makes the machine wait with its sleep.
    bool isDelayed() const {
        pollfd end{m_delay, 0, 0};
        return m_delay >= 0 && ::poll(&end, 1, 0) == 0;
    }
    bool wasAsked() const { return m_wasAsked; }

private:
    std::optional<QVariantList> answer(const QDBusMessage& question) override {
        m_wasAsked = true;
        int ends[2];
        if (question.member() != "Inhibit" || question.arguments().value(0) != "sleep" ||
            question.arguments().value(3) != "delay" || ::pipe2(ends, O_CLOEXEC) != 0)
            return {};
        ::close(std::exchange(m_delay, ends[0]));
        QDBusUnixFileDescriptor delay;
        delay.giveFileDescriptor(ends[1]);
        return {{QVariant::fromValue(delay)}};
    }

    int m_delay = -1; ///< Hangs up as the last holder of the other end lets go.
    bool m_wasAsked = false;
};

} // namespace Harness
