#include "BareCover.h"
#include "FrameCopy.h"
#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <algorithm>
#include <csignal>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Benchmarks {

using namespace Harness;

namespace {

constexpr int rounds = 30;
constexpr auto restBetween = 250ms;

/// Whether the server finds memory anew for the windows' pictures is its allocator's whim. One that
/// keeps what it has freed tells what the rest takes.
const std::vector<std::string> hoarding = {"env", "MALLOC_TRIM_THRESHOLD_=1073741824",
                                           "MALLOC_MMAP_THRESHOLD_=1073741824"};

enum class Sight { Clear, Blurred };

/// The last pixel of a monitor to be drawn: the wallpaper's own, or a darkened mixture. Bare black
/// counts as neither.
bool shows(const Screen& screen, const Area& monitor, Sight sight) {
    const int x = monitor.right() - 1;
    const int y = monitor.bottom() - 1;
    const Picture corner = screen.grab({x, y, 1, 1});
    const bool clear = corner.at(x, y) == Scenery::wallpaper;
    return sight == Sight::Clear ? clear : !clear && corner.luminance(x, y) > 20;
}

/// What was taken at each round.
struct Toggles {
    Samples show;
    Samples hide;
    Samples found; ///< Memory that the server found meanwhile.
};

double timeUntil(const Desktop& desktop, const std::vector<Area>& monitors, Sight expected,
                 const std::function<void()>& act) {
    const auto start = Clock::now();
    act();
    for (const Area& monitor : monitors)
        while (!shows(desktop.screen, monitor, expected))
            if (millisecondsSince(start) > 5000) throw std::runtime_error("nothing came of it");
    return millisecondsSince(start);
}

double timeClick(Desktop& desktop, const std::vector<Area>& monitors, Sight expected) {
    std::this_thread::sleep_for(restBetween);
    return timeUntil(desktop, monitors, expected, [&] { desktop.input.click(1); });
}

void addClicks(Toggles& toggles, Desktop& desktop, const std::vector<Area>& monitors) {
    const pid_t server = desktop.server->process().pid();
    const double before = memoryFound(server);
    toggles.show.add(timeClick(desktop, monitors, Sight::Blurred));
    toggles.found.add(memoryFound(server) - before);
    toggles.hide.add(timeClick(desktop, monitors, Sight::Clear));
}

/// A toggle that leaves out all that can be, in the same server, while the program stands still.
void addFloor(Toggles& toggles, Desktop& desktop, const Scenery& scenery,
              const std::vector<Area>& monitors, const Process& program) {
    const XClient client(desktop.display());
    const pid_t server = desktop.server->process().pid();
    const auto time = [&](const std::function<void()>& ask) {
        client.settle();
        const auto start = Clock::now();
        ask();
        client.settle();
        return millisecondsSince(start);
    };
    kill(program.pid(), SIGSTOP);
    {
        const double before = memoryFound(server);
        BareToggle toggle(client, monitors);
        toggles.show.add(time([&] {
            toggle.halve();
            toggle.keepPictures();
            toggle.paint();
        }));
        toggles.found.add(memoryFound(server) - before);
        toggle.namePictures(scenery.windows());
        toggle.markLastPixels();
        client.settle();
        toggles.hide.add(timeUntil(desktop, monitors, Sight::Clear, [&] {
            toggle.hide();
            xcb_flush(client);
        }));
    }
    client.settle();
    kill(program.pid(), SIGCONT);
}

struct Terms {
    std::string showGoal = {};
    std::string hideGoal = {};
    std::string where = {};
    size_t maximised = 0; ///< Windows, instead of the usual seven.
};

/// Gives the medians.
std::pair<double, double> measure(Report& report, std::unique_ptr<XServer> xServer,
                                  const Terms& terms = {}) {
    Desktop desktop(std::move(xServer));
    const Scenery scenery(desktop, terms.maximised);
    Agent agent(desktop);
    const Area icon = desktop.tray->icons().back();
    desktop.input.move(icon.x + icon.width / 2, icon.y + icon.height / 2);
    const std::vector<Area> monitors = desktop.screen.monitors();

    Toggles clicks;
    Toggles floor;
    FrameCopy::Unit unit;
    for (int i = 0; i < rounds; ++i) {
        addClicks(clicks, desktop, monitors);
        addFloor(floor, desktop, scenery, monitors, agent.process());
        unit.take();
    }

    const std::string windows = terms.maximised > 0 ? "eight maximised" : "seven";
    report.section("From the click to the last pixel, " + windows + " windows, " +
                   std::to_string(monitors.size()) + " x " +
                   std::to_string(monitors.front().width) + "x" +
                   std::to_string(monitors.front().height) + terms.where);
    const auto add = [&](const char* what, const Samples& samples, const std::string& goal) {
        report.add({what, spread(samples, "ms"), goal, unit.ratio(samples.median())});
    };
    add("show", clicks.show, terms.showGoal);
    add("show, the floor", floor.show, "");
    add("hide", clicks.hide, terms.hideGoal);
    add("hide, the floor", floor.hide, "");
    report.add({"the server finds memory to show", figure(clicks.found.median(), "MB"), "",
                figure(floor.found.median(), "MB") + " for the floor"});
    return {clicks.show.median(), clicks.hide.median()};
}

} // namespace

void measureToggle(Report& report) {
    const auto [show, hide] =
        measure(report, Scenery::monitors(1), {"at most 7 copies", "at most 3 copies"});
    measure(report, Scenery::monitors(4), {"at most 14 copies", "at most 6 copies"});
    measure(report, Scenery::monitor(Scenery::frame.width, Scenery::frame.height, hoarding),
            {.where = ", on a server that keeps its memory"});
    measure(report, Scenery::monitors(1), {.maximised = 8});
    const Area& large = Scenery::largeFrame;
    const auto [largeShow, largeHide] =
        measure(report, Scenery::monitor(large.width, large.height));
    report.add({"show, beside one of 1920x1080", figure(largeShow / show, "times"), "at most 4"});
    report.add({"hide, beside one of 1920x1080", figure(largeHide / hide, "times"), "at most 4"});
}

} // namespace Benchmarks
