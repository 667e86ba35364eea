#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <thread>

namespace Benchmarks {

using namespace Harness;

namespace {

void tell(Report& report, const std::string& state, pid_t program) {
    const auto add = [&](const char* what, const char* file, const char* field, const char* goal) {
        const auto megabytes = memory(program, file, field);
        report.add(
            {state + ": " + what, megabytes ? figure(*megabytes, "MB") : "not readable", goal});
    };
    add("resident", "status", "VmRSS", "at most 28 MB");
    add("of it anonymous", "status", "RssAnon", "under 12 MB");
    add("of it private and written to", "smaps_rollup", "Private_Dirty", "under 12 MB");
}

} // namespace

void measureMemory(Report& report) {
    Desktop desktop;
    const Scenery scenery(desktop);
    Agent agent(desktop);
    report.section("Memory, seven windows, 1920x1080 and 1280x1024");

    tell(report, "clear", agent.process().pid());
    agent.cover();
    std::this_thread::sleep_for(500ms);
    tell(report, "covered", agent.process().pid());
    agent.uncover();
    tell(report, "clear again", agent.process().pid());
}

} // namespace Benchmarks
