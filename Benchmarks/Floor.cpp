#include "BareCover.h"
#include "FrameCopy.h"
#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "WindowServer/GaussianBlur.h"

#include "Harness/Await.h"

#include <functional>
#include <thread>
#include <utility>

#include <unistd.h>

#include <xcb/composite.h>

namespace Benchmarks {

using namespace Harness;
using WindowServer::BlurPlan;
using WindowServer::PixelRect;
using WindowServer::SmallImage;

namespace {

constexpr int rounds = 30;

/// What no toggle can leave out, step by step, with no click, no look at the windows and no blur.
void measureSteps(Report& report, int monitors) {
    Desktop desktop(Scenery::monitors(monitors));
    const Scenery scenery(desktop);
    const XClient client(desktop.display());
    const pid_t server = desktop.server->process().pid();
    Samples found;
    FrameCopy::Unit unit;
    struct Step {
        const char* what;
        std::function<void(BareToggle&)> ask;
        Samples samples = {};
    } steps[] = {
        {"halve the screen four times", [](auto& toggle) { toggle.halve(); }},
        {"begin to keep the windows' pictures", [](auto& toggle) { toggle.keepPictures(); }},
        {"enlarge into the covers", [](auto& toggle) { toggle.paint(); }},
        {"name them", [&](auto& toggle) { toggle.namePictures(scenery.windows()); }},
        {"hide, and put the windows back", [](auto& toggle) { toggle.hide(); }}};
    for (int i = 0; i < rounds; ++i) {
        const double before = memoryFound(server);
        BareToggle toggle(client, desktop.screen.monitors());
        for (Step& step : steps) {
            client.settle();
            const auto start = Clock::now();
            step.ask(toggle);
            client.settle();
            step.samples.add(millisecondsSince(start));
        }
        found.add(memoryFound(server) - before);
        unit.take();
    }
    report.section("What no toggle can leave out, seven windows, " + std::to_string(monitors) +
                   " x 1920x1080");
    for (const Step& step : steps)
        report.add({step.what, spread(step.samples, "ms"), "", unit.ratio(step.samples.median())});
    report.add({"memory that the server finds for it", figure(found.median(), "MB")});
}

/// What the pictures of windows cost that nobody sees, the uppermost hiding all others.
void measureHidden(Report& report) {
    Desktop desktop(Scenery::monitors(1));
    constexpr size_t count = 8;
    const Scenery scenery(desktop, count);
    Samples all;
    Samples uppermost;
    FrameCopy::Unit unit;
    for (int i = 0; i < rounds; ++i) {
        for (Samples* samples : {&all, &uppermost}) {
            std::this_thread::sleep_for(50ms); // The last one's pictures go with its connection.
            const XClient client(desktop.display());
            const BareToggle toggle(client, desktop.screen.monitors());
            client.settle();
            const auto start = Clock::now();
            if (samples == &all)
                toggle.keepPictures();
            else
                toggle.keepPicture(scenery.windows().back());
            client.settle();
            samples->add(millisecondsSince(start));
        }
        unit.take();
    }
    report.section("Beginning to keep pictures, eight maximised windows, 1 x 1920x1080");
    report.add({"of all", spread(all, "ms"), "", unit.ratio(all.median())});
    report.add(
        {"of the uppermost alone", spread(uppermost, "ms"), "", unit.ratio(uppermost.median())});
}

/// What no cover can leave out that follows a window as it changes: the processor time of the
/// server and this process, without that of the change itself.
void measureFrame(Report& report, const Area& screen, const Area& area, const std::string& goal) {
    Desktop desktop(Scenery::monitor(screen.width, screen.height));
    const XClient client(desktop.display());
    TestWindow window(desktop.display(), area);
    window.show();
    const Area monitor = desktop.screen.monitors().front();
    const BareToggle toggle(client, {monitor});
    toggle.keepPictures();
    toggle.paint();
    const xcb_pixmap_t pixmap = xcb_generate_id(client);
    xcb_composite_name_window_pixmap(client, window.number(), pixmap);
    const BareCover& cover = toggle.cover(0);
    const xcb_render_picture_t source = cover.makeSource(pixmap);
    const Area whole = cover.whole();
    constexpr int factor = BareCover::factor;
    const int right = (area.right() + factor - 1) / factor;
    const int bottom = (area.bottom() + factor - 1) / factor;
    const Area changed = {area.x / factor, area.y / factor, right - area.x / factor,
                          bottom - area.y / factor};
    const auto inPixels = [](const Area& part) {
        return Area{part.x * factor, part.y * factor, part.width * factor, part.height * factor};
    };
    SmallImage image(whole.width / factor, whole.height / factor);
    SmallImage blurred = image;
    std::vector<uint32_t> shown(image.values.size() / 4);
    WindowServer::GaussianBlur blur(BlurPlan::forDeviation(84).deviation);
    FrameCopy::Unit unit;
    const pid_t server = desktop.server->process().pid();
    double taken = 0;
    for (int i = 0; i < rounds; ++i) {
        window.paint(i % 2 == 0 ? 0x204080 : 0xC0D0E0);
        client.settle();
        const double before = processorTime(server) + processorTime(getpid());
        cover.halve(source, -area.x, -area.y, inPixels(changed));
        const auto reply = cover.read(inPixels(changed));
        const uint8_t* from = xcb_get_image_data(reply.get());
        for (int y = changed.y; y < changed.y + changed.height; ++y, from += changed.width * 4)
            std::copy_n(from, changed.width * 4, image.row(y) + changed.x * 4);
        const PixelRect reached =
            blur.update(image, {changed.x, changed.y, changed.width, changed.height}, blurred);
        Area part; // What looks different.
        for (int y = reached.y; y < reached.y + reached.height; ++y)
            for (int x = reached.x; x < reached.x + reached.width; ++x) {
                const float* values = blurred.row(y) + x * 4;
                const uint32_t pixel = static_cast<uint32_t>(values[2] * 0.6F) << 16 |
                                       static_cast<uint32_t>(values[1] * 0.6F) << 8 |
                                       static_cast<uint32_t>(values[0] * 0.6F);
                if (std::exchange(shown[static_cast<size_t>(y) * image.width + x], pixel) != pixel)
                    part = part.joined({x, y, 1, 1});
            }
        cover.write(shown.data() + static_cast<ptrdiff_t>(part.y) * image.width,
                    inPixels({0, part.y, image.width, part.height}));
        cover.enlarge(inPixels(part));
        client.settle();
        taken += processorTime(server) + processorTime(getpid()) - before;
        unit.take();
    }
    const double frame = taken / rounds;
    report.add({"a window of " + std::to_string(area.width) + "x" + std::to_string(area.height),
                figure(frame, "ms"), goal, unit.ratio(frame)});
}

} // namespace

void measureFloor(Report& report) {
    measureSteps(report, 1);
    measureSteps(report, 4);
    measureHidden(report);
    report.section("What no frame that follows a window can leave out");
    measureFrame(report, Scenery::frame, Scenery::frame, "at most 3 copies");
    measureFrame(report, Scenery::frame, Scenery::smallWindow, "at most 0.3 copies");
    measureFrame(report, Scenery::largeFrame, Scenery::largeFrame, "");
}

} // namespace Benchmarks
