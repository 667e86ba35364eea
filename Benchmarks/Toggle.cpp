#include "FrameCopy.h"
#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <algorithm>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Benchmarks {

using namespace Harness;

namespace {

constexpr int rounds = 30;
constexpr auto restBetween = 250ms;

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

double timeClick(Desktop& desktop, const std::vector<Area>& monitors, Sight expected) {
    std::this_thread::sleep_for(restBetween);
    const auto start = Clock::now();
    desktop.input.click(1);
    for (const Area& monitor : monitors)
        while (!shows(desktop.screen, monitor, expected))
            if (millisecondsSince(start) > 5000) throw std::runtime_error("the click did nothing");
    return millisecondsSince(start);
}

/// Gives the medians of showing and hiding.
std::pair<double, double> measure(Report& report, std::unique_ptr<XServer> xServer,
                                  const std::string& showGoal, const std::string& hideGoal) {
    Desktop desktop(std::move(xServer));
    const Scenery scenery(desktop);
    Agent agent(desktop);
    const Area icon = desktop.tray->icons().back();
    desktop.input.move(icon.x + icon.width / 2, icon.y + icon.height / 2);
    const std::vector<Area> monitors = desktop.screen.monitors();

    const pid_t server = desktop.server->process().pid();
    Samples show;
    Samples found;
    Samples hide;
    for (int i = 0; i < rounds; ++i) {
        const double before = memoryFound(server);
        show.add(timeClick(desktop, monitors, Sight::Blurred));
        found.add(memoryFound(server) - before);
        hide.add(timeClick(desktop, monitors, Sight::Clear));
    }

    report.section("From the click to the last pixel, seven windows, " +
                   std::to_string(monitors.size()) + " x " +
                   std::to_string(monitors.front().width) + "x" +
                   std::to_string(monitors.front().height));
    report.add({"show", spread(show, "ms"), showGoal, FrameCopy::ratio(show.median())});
    report.add({"of it: server finds memory for pictures", figure(found.median(), "MB"), "",
                "about " + figure(found.median() * FrameCopy::findingMegabyte(), "ms here")});
    report.add({"hide", spread(hide, "ms"), hideGoal, FrameCopy::ratio(hide.median())});
    return {show.median(), hide.median()};
}

} // namespace

void measureToggle(Report& report) {
    const auto [show, hide] =
        measure(report, Scenery::monitors(1), "at most 7 copies", "at most 3 copies");
    measure(report, Scenery::monitors(4), "at most 14 copies", "at most 6 copies");
    const Area& large = Scenery::largeFrame;
    const auto [largeShow, largeHide] =
        measure(report, Scenery::monitor(large.width, large.height), "", "");
    report.add({"show, beside one of 1920x1080", figure(largeShow / show, "times"), "at most 4"});
    report.add({"hide, beside one of 1920x1080", figure(largeHide / hide, "times"), "at most 4"});
}

} // namespace Benchmarks
