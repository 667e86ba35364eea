#include "FrameCopy.h"
#include "Measurements.h"
#include "Scenery.h"
#include "Usage.h"

#include "Harness/Await.h"

#include <functional>
#include <map>
#include <string_view>

#include <xcb/composite.h>
#include <xcb/xcb_renderutil.h>

namespace Benchmarks {

using namespace Harness;

namespace {

/// What no toggle can leave out, asked of the server with nothing besides: the screen is halved
/// four times, the windows get pictures, and a small picture is enlarged into a window.
class BareToggle {
public:
    explicit BareToggle(Desktop& desktop)
        : m_client(desktop.display()), m_server(desktop.server->process().pid()),
          m_size(desktop.screen.bounds()), m_cover(xcb_generate_id(m_client)) {
        const auto* formats = xcb_render_util_query_formats(m_client);
        m_argb = xcb_render_util_find_standard_format(formats, XCB_PICT_STANDARD_ARGB_32)->id;
        m_rgb = xcb_render_util_find_standard_format(formats, XCB_PICT_STANDARD_RGB_24)->id;
        const uint32_t overrides = 1;
        xcb_create_window(m_client, XCB_COPY_FROM_PARENT, m_cover, m_client.root(), 0, 0,
                          static_cast<uint16_t>(m_size.width), static_cast<uint16_t>(m_size.height),
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &overrides);
        m_levels.push_back(picture(m_client.root(), m_rgb));
        for (int level = 1; level <= halvings; ++level)
            m_levels.push_back(scratch(m_size.width >> level, m_size.height >> level));
        m_small = picture(m_smallest, m_argb);
        m_half = scratch(m_size.width / 2, m_size.height / 2);
        m_screen = picture(m_cover, m_rgb);
        setScale(m_small, 2.0 / (1 << halvings), "bilinear");
        setScale(m_half, 0.5, "nearest");
        for (int level = 0; level < halvings; ++level)
            setScale(m_levels[static_cast<size_t>(level)], 2, "bilinear");
    }

    void run() {
        step("halve the screen four times", [this] { halve(); });
        const double before = memoryFound(m_server);
        step("begin to keep the windows' pictures", [this] {
            xcb_composite_redirect_subwindows(m_client, m_client.root(),
                                              XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        });
        m_found.add(memoryFound(m_server) - before);
        xcb_composite_unredirect_window(m_client, m_cover, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        xcb_map_window(m_client, m_cover);
        m_client.settle();
        step("enlarge", [this] { enlarge(); });
        xcb_unmap_window(m_client, m_cover);
        step("give the pictures back", [this] {
            xcb_composite_unredirect_subwindows(m_client, m_client.root(),
                                                XCB_COMPOSITE_REDIRECT_AUTOMATIC);
        });
    }

    void tell(Report& report) {
        for (const auto& [name, samples] : m_steps)
            report.add({name, spread(samples, "ms"), "", FrameCopy::ratio(samples.median())});
        report.add({"memory that the server finds for it", figure(m_found.median(), "MB")});
    }

private:
    static constexpr int halvings = 4;

    xcb_render_picture_t picture(xcb_drawable_t drawable, xcb_render_pictformat_t format) {
        const xcb_render_picture_t made = xcb_generate_id(m_client);
        const uint32_t values[] = {XCB_RENDER_REPEAT_PAD, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
        xcb_render_create_picture(m_client, made, drawable, format,
                                  XCB_RENDER_CP_REPEAT | XCB_RENDER_CP_SUBWINDOW_MODE, values);
        return made;
    }

    xcb_render_picture_t scratch(int width, int height) {
        m_smallest = xcb_generate_id(m_client);
        xcb_create_pixmap(m_client, 32, m_smallest, m_client.root(), static_cast<uint16_t>(width),
                          static_cast<uint16_t>(height));
        return picture(m_smallest, m_argb);
    }

    void setScale(xcb_render_picture_t source, double factor, std::string_view filter) {
        const auto fixed = static_cast<xcb_render_fixed_t>(factor * 65536);
        xcb_render_set_picture_transform(m_client, source, {fixed, 0, 0, 0, fixed, 0, 0, 0, 65536});
        xcb_render_set_picture_filter(m_client, source, static_cast<uint16_t>(filter.size()),
                                      filter.data(), 0, nullptr);
    }

    void draw(xcb_render_picture_t from, xcb_render_picture_t to, int shrunk) {
        xcb_render_composite(m_client, XCB_RENDER_PICT_OP_SRC, from, XCB_NONE, to, 0, 0, 0, 0, 0, 0,
                             static_cast<uint16_t>(m_size.width >> shrunk),
                             static_cast<uint16_t>(m_size.height >> shrunk));
    }

    void halve() {
        for (size_t level = 1; level < m_levels.size(); ++level)
            draw(m_levels[level - 1], m_levels[level], static_cast<int>(level));
    }

    void enlarge() {
        draw(m_small, m_half, 1);
        draw(m_half, m_screen, 0);
    }

    void step(const std::string& name, const std::function<void()>& requests) {
        m_client.settle();
        const auto start = Clock::now();
        requests();
        m_client.settle();
        m_steps[name].add(millisecondsSince(start));
    }

    XClient m_client;
    pid_t m_server;
    Area m_size;
    xcb_window_t m_cover;
    xcb_render_pictformat_t m_argb = 0;
    xcb_render_pictformat_t m_rgb = 0;
    xcb_pixmap_t m_smallest = XCB_NONE;
    std::vector<xcb_render_picture_t> m_levels; ///< From the screen downwards.
    xcb_render_picture_t m_small = 0;
    xcb_render_picture_t m_half = 0;
    xcb_render_picture_t m_screen = 0;
    std::map<std::string, Samples> m_steps;
    Samples m_found;
};

} // namespace

void measureFloor(Report& report) {
    Desktop desktop(Scenery::monitors(1));
    const Scenery scenery(desktop);
    BareToggle toggle(desktop);
    constexpr int rounds = 30;
    for (int i = 0; i < rounds; ++i)
        toggle.run();
    report.section("What no toggle can leave out, seven windows, 1 x 1920x1080");
    toggle.tell(report);
}

} // namespace Benchmarks
