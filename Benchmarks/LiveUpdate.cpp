#include "FrameCopy.h"
#include "Glass.h"
#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace Benchmarks {

using namespace Harness;

namespace {

/// How often the load changes, and for how long.
struct Pace {
    int frames;
    std::chrono::milliseconds frameTime;
};

constexpr Pace lively = {100, 50ms};
/// Slow enough for a compositor that blurs in software to draw every frame. At the lively pace it
/// takes all of a processor and leaves frames out.
constexpr Pace slow = {20, 250ms};
/// As fast as covers follow.
constexpr Pace film = {90, 33ms};

constexpr auto lookEvery = 4ms;

/// A window that changes in every pixel, as cheaply as the server can.
class Load {
public:
    Load(Desktop& desktop, const Area& area) : m_window(desktop.display(), area) {
        m_window.paintChecks(8);
        m_window.lower();
        m_window.show();
    }

    void run(
        const Pace& pace, const std::function<void()>& look = [] {}) {
        auto next = Clock::now();
        for (int i = 0; i < pace.frames; ++i) {
            m_window.paint(i % 2 == 0 ? 0x204080 : 0xC0D0E0);
            for (next += pace.frameTime; Clock::now() < next; look())
                std::this_thread::sleep_until(std::min(next, Clock::now() + lookEvery));
        }
    }

private:
    TestWindow m_window;
};

/// The processor time of the server and of another program while the load runs, in milliseconds a
/// frame.
struct Cost {
    double server = 0;
    double program = 0;
    FrameCopy::Unit unit = {};
    double total() const { return server + program; }
};

Cost measure(Desktop& desktop, Load& load, const Pace& pace, const Process& program) {
    Cost cost;
    cost.unit.take();
    const pid_t server = desktop.server->process().pid();
    const double serverBefore = processorTime(server);
    const double programBefore = processorTime(program.pid());
    load.run(pace);
    cost.server = (processorTime(server) - serverBefore) / pace.frames;
    cost.program = (processorTime(program.pid()) - programBefore) / pace.frames;
    cost.unit.take();
    return cost;
}

/// How many different pictures the last pixel of each monitor shows while the load runs, of the
/// monitor where it is least.
size_t countFrames(Desktop& desktop, Load& load, const Pace& pace) {
    struct Corner {
        Area pixel;
        uint32_t colour = 0;
        size_t changes = 0;
    };
    std::vector<Corner> corners;
    for (const Area& monitor : desktop.screen.monitors())
        corners.push_back({{monitor.right() - 1, monitor.bottom() - 1, 1, 1}});
    load.run(pace, [&] {
        for (Corner& corner : corners) {
            const uint32_t colour =
                desktop.screen.grab(corner.pixel).at(corner.pixel.x, corner.pixel.y);
            corner.changes += std::exchange(corner.colour, colour) != colour;
        }
    });
    return std::ranges::min(corners, {}, &Corner::changes).changes;
}

Row row(const std::string& what, const Cost& cost) {
    return {what, figure(cost.total(), "ms") + ", server " + figure(cost.server, "ms"), "",
            cost.unit.ratio(cost.total())};
}

struct Compositor {
    const char* what;
    std::vector<std::string> options;
};

const Compositor compositors[] = {
    {"picom, gaussian, xrender", {"--backend", "xrender", "--blur-method", "gaussian"}},
    {"picom, gaussian, glx", {"--backend", "glx", "--blur-method", "gaussian"}},
    {"picom, dual kawase, glx", {"--backend", "glx", "--blur-method", "dual_kawase"}},
    {"picom, dual kawase at its strongest, glx",
     {"--backend", "glx", "--blur-method", "dual_kawase", "--blur-strength", "20"}},
};

Cost measureCompositor(const Compositor& compositor, const Pace& pace) {
    Desktop desktop(Scenery::monitors(1));
    Load load(desktop, desktop.screen.bounds());
    const Glass glass(desktop.display(), desktop.screen.bounds());
    std::vector<std::string> command = {"picom", "--config", "/dev/null", "--experimental-backends",
                                        "--blur-background"};
    command.insert(command.end(), compositor.options.begin(), compositor.options.end());
    const Process picom(command, desktop.environment());
    // The checks below the glass step by 153 until they are blurred.
    const bool blurs = await(
        [&] {
            return desktop.screen.grab({600, 300, 200, 200}).sharpestStep() < 100;
        },
        10s);
    if (!blurs) throw std::runtime_error(std::string(compositor.what) + ": " + picom.errors());
    return measure(desktop, load, pace, picom);
}

struct Share {
    Cost covered;
    double cover = 0;  ///< What of it is the cover's.
    size_t frames = 0; ///< Seen of as many changes as the pace has.
};

/// Over a window as large as the screen, or of the area given.
Share measureCover(Report& report, const Pace& pace, std::unique_ptr<XServer> xServer,
                   const std::string& goal, const std::optional<Area>& area = {}) {
    Desktop desktop(std::move(xServer));
    Load load(desktop, area.value_or(desktop.screen.bounds()));
    Agent agent(desktop);
    const Cost clear = measure(desktop, load, pace, agent.process());
    agent.cover();
    const Cost covered = measure(desktop, load, pace, agent.process());
    const size_t frames = countFrames(desktop, load, pace);
    agent.uncover();
    const double share = covered.total() - clear.total();
    report.add(row("clear", clear));
    report.add(row("covered", covered));
    report.add({"the cover's share", figure(share, "ms"), goal, covered.unit.ratio(share)});
    return {covered, share, frames};
}

/// Gives the cover's share.
double measureAt(Report& report, const Pace& pace) {
    report.section("Processor time a frame of a window of 1920x1080 that changes " +
                   std::to_string(1000ms / pace.frameTime) + " times a second");
    const Share share = measureCover(report, pace, Scenery::monitors(1), "at most 3 copies");
    const Cost& ours = share.covered;
    for (const Compositor& compositor : compositors) {
        const Cost theirs = measureCompositor(compositor, pace);
        report.add(row(compositor.what, theirs));
        report.add({"covered, as a part of that", figure(ours.total() / theirs.total(), ""),
                    "at most 0.1"});
    }
    return share.cover;
}

/// What follows from other sizes, beside the share of a cover over a whole frame.
void measureSizes(Report& report, double wholeFrame) {
    const Area& large = Scenery::largeFrame;
    report.section("The same, a window of 200x200");
    measureCover(report, lively, Scenery::monitors(1), "at most 0.3 copies", Scenery::smallWindow);
    report.section("The same, a window of 3840x2160");
    const Share share =
        measureCover(report, lively, Scenery::monitor(large.width, large.height), "");
    report.add({"beside one of 1920x1080", figure(share.cover / wholeFrame, "times"), "at most 4"});
    report.section("Two monitors of 3840x2160, a window over both that changes 30 times a second");
    const Share both = measureCover(report, film, Scenery::pair(large), "");
    const double second = 1000.0 / static_cast<double>(film.frameTime.count());
    report.add({"covered, of one processor", figure(both.covered.total() * second / 10, "%"),
                "under 100 %"});
    report.add({"frames seen of " + std::to_string(film.frames), std::to_string(both.frames),
                "all of them"});
}

} // namespace

void measureLiveUpdate(Report& report) {
    measureSizes(report, measureAt(report, lively));
    measureAt(report, slow);
}

} // namespace Benchmarks
