#include "Scenery.h"

#include <utility>

namespace Benchmarks {

using namespace Harness;

namespace {

/// Two large windows, a middling one, three terminals and a utility; all clear of the lower edge,
/// where the tray stands. Each lies partly below the next.
constexpr Area windowAreas[] = {
    {60, 40, 1200, 800},  {560, 120, 1000, 700}, {1000, 60, 800, 560},  {120, 560, 640, 400},
    {700, 600, 640, 400}, {1220, 520, 640, 400}, {1450, 180, 400, 500},
};

constexpr Area maximisedArea = {0, 0, 1920, 1040};

} // namespace

std::unique_ptr<XServer> Scenery::monitor(int width, int height,
                                          std::vector<std::string> launcher) {
    const std::string size = std::to_string(width) + "x" + std::to_string(height) + "x24";
    return XServer::framebuffer({"-screen", "0", size}, std::move(launcher));
}

std::unique_ptr<XServer> Scenery::monitors(int count) {
    if (count == 1) return monitor(frame.width, frame.height);
    auto server = monitor(2 * frame.width, 2 * frame.height);
    for (int i = 0; i < 4; ++i)
        server->xrandr({"--setmonitor", std::string("M") + std::to_string(i),
                        "1920/500x1080/290+" + std::to_string(i % 2 * frame.width) + "+" +
                            std::to_string(i / 2 * frame.height),
                        i == 0 ? "screen" : "none"});
    return server;
}

std::unique_ptr<XServer> Scenery::pair(const Area& each) {
    auto server = monitor(2 * each.width, each.height);
    const std::string size =
        std::to_string(each.width) + "/1000x" + std::to_string(each.height) + "/600+";
    server->xrandr({"--setmonitor", "left", size + "0+0", "screen"});
    server->xrandr({"--setmonitor", "right", size + std::to_string(each.width) + "+0", "none"});
    return server;
}

Scenery::Scenery(Desktop& desktop, size_t maximised) : m_client(desktop.display()) {
    hangWallpaper();
    std::vector<Area> areas(std::begin(windowAreas), std::end(windowAreas));
    if (maximised > 0) areas.assign(maximised, maximisedArea);
    const std::vector<Area> monitors = desktop.screen.monitors();
    for (const Area& area : areas) {
        const size_t number = m_windows.size();
        const Area& monitor = monitors[number % monitors.size()];
        const int scale = monitor.width / frame.width;
        m_windows.push_back(std::make_unique<TestWindow>(
            desktop.display(), Area{monitor.x + area.x * scale, monitor.y + area.y * scale,
                                    area.width * scale, area.height * scale}));
        m_windows.back()->paintChecks(4 + 3 * static_cast<int>(number));
        m_windows.back()->show();
    }
}

std::vector<xcb_window_t> Scenery::windows() const {
    std::vector<xcb_window_t> numbers;
    for (const auto& window : m_windows)
        numbers.push_back(window->number());
    return numbers;
}

/// Both as the root's background and in the property under which programs look for it.
void Scenery::hangWallpaper() const {
    const xcb_screen_t& screen = m_client.screen();
    const xcb_pixmap_t pixmap = xcb_generate_id(m_client);
    const xcb_gcontext_t context = xcb_generate_id(m_client);
    const xcb_rectangle_t all = {0, 0, screen.width_in_pixels, screen.height_in_pixels};
    xcb_create_pixmap(m_client, screen.root_depth, pixmap, screen.root, all.width, all.height);
    xcb_create_gc(m_client, context, pixmap, XCB_GC_FOREGROUND, &wallpaper);
    xcb_poly_fill_rectangle(m_client, pixmap, context, 1, &all);
    xcb_free_gc(m_client, context);
    xcb_change_window_attributes(m_client, screen.root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_change_property(m_client, XCB_PROP_MODE_REPLACE, screen.root,
                        m_client.atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP, 32, 1, &pixmap);
    xcb_clear_area(m_client, 0, screen.root, 0, 0, 0, 0);
    m_client.settle();
}

} // namespace Benchmarks
