#include "WindowServer/X11/Blur/LiveBlur.h"

#include "WindowServer/X11/Blur/ScreenPicture.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <xcb/composite.h>

namespace WindowServer {

namespace {

std::tuple<int, int, int> sizeOf(const Backdrop& backdrop) {
    return {backdrop.plan().halvings, backdrop.width(), backdrop.height()};
}

} // namespace

std::vector<LiveBlur::Pending> LiveBlur::request(const std::vector<Behind>& behinds,
                                                 const std::vector<PixelRect>& areas) {
    // Scratch pictures of a monitor that has gone would stay for as long as it is covered.
    std::erase_if(m_pyramids, [&](const auto& entry) {
        return std::ranges::none_of(
            behinds, [&](const Behind& behind) { return sizeOf(behind.backdrop) == entry.first; });
    });
    std::optional<ScreenPicture> screen;
    if (!m_scene) screen.emplace(m_connection);
    Drawable& desktop = m_scene ? static_cast<Drawable&>(*m_scene) : *screen;
    std::vector<Pending> pending;
    for (const Behind& behind : behinds) {
        PixelRect dirty;
        for (const PixelRect& area : areas)
            dirty = united(dirty, intersection(area, behind.pixels));
        if (isEmpty(dirty)) continue;
        Pyramid& pyramid = pyramidFor(behind.backdrop);
        pending.push_back({behind.backdrop, pyramid,
                           pyramid.request(desktop, dirty, behind.pixels.x, behind.pixels.y)});
    }
    return pending;
}

std::vector<Backdrop*> LiveBlur::receive(const std::vector<Pending>& pending) const {
    std::vector<Backdrop*> received;
    for (const Pending& one : pending) {
        if (!one.pyramid.receive(one.request, one.backdrop.source())) continue;
        one.backdrop.sourceChanged(one.request.part);
        received.push_back(&one.backdrop);
    }
    return received;
}

// Automatic: the server goes on drawing the windows. A compositor's manual redirection may come and
// go meanwhile.
void LiveBlur::hold() {
    if (std::exchange(m_holds, true)) return;
    xcb_composite_redirect_subwindows(m_connection.xcb(), m_connection.root(),
                                      XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

LiveBlur::~LiveBlur() {
    if (!m_holds) return;
    xcb_composite_unredirect_subwindows(m_connection.xcb(), m_connection.root(),
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    // Freeing the windows' memory, as the scene goes, takes the server a while. The screen is clear
    // before that begins.
    m_connection.settle();
}

void LiveBlur::exempt(xcb_window_t cover) {
    if (m_exempted.insert(cover).second)
        xcb_composite_unredirect_window(m_connection.xcb(), cover,
                                        XCB_COMPOSITE_REDIRECT_AUTOMATIC);
}

void LiveBlur::follow(std::function<bool(xcb_window_t)> shows) {
    m_scene = std::make_unique<Scene>(m_connection, std::move(shows));
}

Pyramid& LiveBlur::pyramidFor(const Backdrop& backdrop) {
    auto& pyramid = m_pyramids[sizeOf(backdrop)];
    if (!pyramid)
        pyramid = std::make_unique<Pyramid>(m_connection, backdrop.width(), backdrop.height(),
                                            backdrop.plan().halvings);
    return *pyramid;
}

} // namespace WindowServer
