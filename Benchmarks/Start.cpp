#include "Measurements.h"
#include "Scenery.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <csignal>
#include <stdexcept>
#include <thread>

namespace Benchmarks {

using namespace Harness;

namespace {

constexpr int rounds = 15;

double timeStart(Desktop& desktop, const std::vector<std::string>& command) {
    const int before = desktop.tray->docked();
    const auto start = Clock::now();
    Process program(command, desktop.environment());
    while (desktop.tray->docked() == before) {
        if (program.status()) throw std::runtime_error(program.errors());
        std::this_thread::sleep_for(200us);
    }
    const double result = millisecondsSince(start);
    // What is still under way to the tray belongs to this start, not to the next.
    std::this_thread::sleep_for(200ms);
    desktop.tray->docked();
    program.send(SIGTERM);
    program.awaitEnd();
    return result;
}

} // namespace

void measureStart(Report& report) {
    Desktop desktop(Scenery::monitors(1));
    Samples bare;
    Samples ours;
    // The first start of each finds its files on the disk only.
    timeStart(desktop, {BARE_TRAY_PROGRAM});
    timeStart(desktop, Agent::command());
    for (int i = 0; i < rounds; ++i) {
        bare.add(timeStart(desktop, {BARE_TRAY_PROGRAM}));
        ours.add(timeStart(desktop, Agent::command()));
    }

    report.section("From the start to the status item");
    report.add({"a bare Qt program with an icon", spread(bare, "ms"), "", "1 bare start"});
    report.add({"this program", spread(ours, "ms"), "at most 1.4 bare",
                figure(ours.median() / bare.median(), "bare starts")});
}

} // namespace Benchmarks
