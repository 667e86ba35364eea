#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <thread>

#include <xcb/composite.h>

namespace Benchmarks {

using namespace Harness;

namespace {

constexpr auto settling = 4s; ///< A round button begins to fade after 2.5 s.
constexpr auto watching = 5s;

void watch(Report& report, const std::string& state, pid_t program) {
    std::this_thread::sleep_for(settling);
    const double time = processorTime(program);
    const long switches = contextSwitches(program);
    std::this_thread::sleep_for(watching);
    report.add({state + ": wake-ups in 5 s",
                figure(static_cast<double>(contextSwitches(program) - switches), ""), "0"});
    report.add(
        {state + ": processor time in 5 s", figure(processorTime(program) - time, "ms"), "0 ms"});
}

/// Only a redirected window has a pixmap that can be named.
bool isRedirected(const TestWindow& window) {
    const XClient& client = window.client();
    const xcb_pixmap_t pixmap = xcb_generate_id(client);
    const Received<xcb_generic_error_t> refusal(xcb_request_check(
        client, xcb_composite_name_window_pixmap_checked(client, window.number(), pixmap)));
    if (!refusal) xcb_free_pixmap(client, pixmap);
    return !refusal;
}

void tellHeld(Report& report, const std::string& state, const Desktop& desktop,
              const Scenery& scenery, pid_t program) {
    const bool redirected = isRedirected(scenery.window(0));
    const auto pixmaps = desktop.screen.holdingsOf(program)["PIXMAP"];
    report.add({state + ": pixmaps", figure(static_cast<double>(pixmaps), "")});
    report.add({state + ": windows redirected", redirected ? "yes" : "no",
                state == "covered" ? "" : "no"});
}

} // namespace

void measureIdle(Report& report) {
    Desktop desktop(Scenery::monitors(1));
    const Scenery scenery(desktop);
    Agent agent(desktop);
    report.section("A screen on which nothing happens, seven windows, 1920x1080");

    tellHeld(report, "clear", desktop, scenery, agent.process().pid());
    watch(report, "clear", agent.process().pid());
    agent.cover();
    watch(report, "covered", agent.process().pid());
    tellHeld(report, "covered", desktop, scenery, agent.process().pid());
    agent.uncover();
    watch(report, "clear again", agent.process().pid());
    tellHeld(report, "clear again", desktop, scenery, agent.process().pid());
}

} // namespace Benchmarks
