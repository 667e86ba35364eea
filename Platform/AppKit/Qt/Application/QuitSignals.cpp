#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Application/Launch.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>

#include <sys/eventfd.h>

namespace {

int wakes = -1;

// A handler may do next to nothing: it wakes the event loop, which does the rest.
void wake(int) { ::eventfd_write(wakes, 1); }

} // namespace

void watchQuitSignals() {
    wakes = ::eventfd(0, EFD_CLOEXEC);
    if (wakes < 0) return;
    auto* notifier = new QSocketNotifier(wakes, QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] {
        eventfd_t count = 0;
        ::eventfd_read(wakes, &count);
        NSApp->terminate(nullptr);
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
