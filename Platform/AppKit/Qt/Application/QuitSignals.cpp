#include "AppKit/Qt/Application/Launch.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

int pipeEnds[2];

// A handler may do next to nothing: it wakes the event loop, which does the rest.
void wake(int) {
    const int savedError = errno;
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], "", 1);
    errno = savedError;
}

} // namespace

void watchQuitSignals(const std::function<void()>& quit) {
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [quit] {
        char wakes[16];
        while (::read(pipeEnds[0], wakes, sizeof wakes) > 0) {
        }
        quit();
    });

    struct sigaction action = {};
    action.sa_handler = wake;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction inherited = {};
        ::sigaction(signal, nullptr, &inherited);
        const bool startedByNohup = signal == SIGHUP && inherited.sa_handler == SIG_IGN;
        if (!startedByNohup) ::sigaction(signal, &action, nullptr);
    }
}
