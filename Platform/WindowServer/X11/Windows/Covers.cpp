#include "WindowServer/X11/Windows/Covers.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/Windows/Stacking.h"
#include "WindowServer/X11/Windows/X11Surface.h"

#include <algorithm>
#include <utility>

namespace WindowServer {

namespace {

constexpr int frameMilliseconds = 33; ///< At most 30 frames a second.

/// For so long the overlay outlives its compositor: until another has taken its place, or what
/// needs one has taken on another form.
constexpr int afterCompositorMilliseconds = 5000;

} // namespace

Covers::Covers(Connection& connection, const Displays& displays, const SelectionWatch& compositor,
               Stacking& stacking)
    : m_connection(connection), m_displays(displays), m_compositor(compositor),
      m_stacking(stacking) {
    const auto run = [](QTimer& timer, const std::function<void()>& action) {
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer, &QTimer::timeout, &timer, action);
    };
    run(m_afterCompositor, [this] { commit(); });
    run(m_frame, [this] { drawFrame(); });
    run(m_above, [this] { drawAbove(); });
}

Covers::~Covers() { m_spare.reset(); } // While there is a list that it leaves.

std::unique_ptr<Surface> Covers::makeSurface() {
    scheduleCommit(); // For another spare one.
    return m_spare ? std::move(m_spare) : newSurface();
}

std::unique_ptr<X11Surface> Covers::newSurface() {
    auto surface = std::make_unique<X11Surface>(
        m_connection, m_displays, m_compositor, m_stacking, ++m_lastNumber,
        [this] { scheduleCommit(); },
        [this](const Surface& gone) {
            std::erase(m_surfaces, &gone);
            scheduleCommit();
        });
    m_surfaces.push_back(surface.get());
    return surface;
}

/// Where windows that appear fade in, one stands ready for a monitor that is plugged in.
void Covers::keepSpare() {
    if (m_spare || !m_compositor.isOwned()) return;
    m_spare = newSurface();
    m_spare->orderFront();
}

/// Before anything of the toolkit's is drawn anew for the same change: icon and buttons take longer
/// to draw than covers to ask for.
void Covers::scheduleCommit() {
    if (std::exchange(m_commitIsDue, true)) return;
    const auto carryOut = [this] {
        m_commitIsDue = false;
        commit();
    };
    QMetaObject::invokeMethod(&m_frame, carryOut, Qt::QueuedConnection);
}

int Covers::setBackgroundBlurRadius(int surfaceNumber, int radius) {
    if (!m_connection.canBlurLive()) return notImplemented;
    const auto found = std::ranges::find(m_surfaces, surfaceNumber, &X11Surface::number);
    if (found == m_surfaces.end()) return illegalArgument;
    (*found)->setRadius(radius);
    return 0;
}

void Covers::setResting(bool rests) {
    if (std::exchange(m_resting, rests) == rests) return;
    for (X11Surface* surface : m_surfaces)
        surface->changed();
    commit();
    m_connection.settle();
}

/// A new one is about to show all that the covers hide, in an order of its own.
void Covers::compositorChanged() {
    if (m_compositor.isOwned()) return commit();
    m_afterCompositor.start(afterCompositorMilliseconds);
    if (m_overlay) m_overlay->compositorEnded();
}

void Covers::leaveScreen() {
    if (m_overlay) m_overlay->keepLastFrame();
    for (X11Surface* surface : m_surfaces)
        surface->hide();
    m_overlay.reset();
    m_connection.settle();
}

bool Covers::own(xcb_window_t window) const {
    return std::ranges::any_of(m_surfaces,
                               [window](const X11Surface* each) { return each->owns(window); });
}

// --- What others do

void Covers::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) == XCB_EXPOSE) {
        const auto& expose = as<xcb_expose_event_t>(event);
        for (X11Surface* surface : m_surfaces)
            if (surface->shows(expose.window)) paint([&] { surface->expose(expose); });
    }
    for (X11Surface* surface : std::vector(m_surfaces))
        if (surface->mend(event)) replace(*surface);
    if (m_live && m_live->handle(event)) scheduleFrame();
    if (m_overlay && m_overlay->handle(event)) m_above.start(0);
}

/// What lies behind is bare meanwhile: a new picture of it, or even a look at the order of the
/// windows, would take longer than what is at hand.
void Covers::replace(X11Surface& surface) {
    surface.makeAnew();
    scheduleCommit();
    if (!surface.isMapped()) return;
    if (m_live && m_live->isFollowing()) {
        m_live->exempt(surface.sentinel());
        m_live->exempt(surface.window());
    }
    surface.showAgain();
    m_stacking.restack();
}

void Covers::coverPlainly() {
    paint([&] {
        for (X11Surface* surface : m_surfaces)
            if (surface->isMapped()) surface->showPlain();
    });
    m_live.reset();
    m_frame.stop();
}

// --- Commit

bool Covers::wantToShow() const { return std::ranges::any_of(m_surfaces, &X11Surface::isWanted); }

void Covers::commit() {
    keepSpare();
    for (X11Surface* surface : m_surfaces)
        surface->place();
    if (m_overlay && !wantsOverlay()) m_overlay->keepLastFrame();
    for (X11Surface* surface : m_surfaces)
        if (!surface->isWanted()) surface->hide();
    const bool any = wantToShow();
    const bool live = m_connection.canBlurLive() && !m_resting &&
                      std::ranges::any_of(m_surfaces, &X11Surface::wantsLiveBlur);
    m_stacking.listen(any);
    if (live && !m_live) m_live = std::make_unique<LiveBlur>(m_connection);
    const bool handsOver = wantsOverlay() != (m_overlay && !m_overlayLost);

    std::vector<X11Surface*> stale;
    std::vector<X11Surface*> shown;
    for (X11Surface* surface : m_surfaces) {
        if (!surface->isWanted()) continue;
        if (surface->isStale()) stale.push_back(surface);
        if (surface->isStale() || handsOver) shown.push_back(surface);
    }
    prepare(stale);
    if (!shown.empty()) showAll(shown);
    if (!stale.empty() && m_live && !m_live->isFollowing()) followDesktop();
    m_stacking.restackIfStale();
    if (!wantsOverlay()) dropOverlay();
    if (!any) m_overpainter = XCB_WINDOW_NONE; // One that had just begun may tell otherwise by now.
    if (!live) {
        m_live.reset();
        m_frame.stop();
    }
    m_connection.flush();
    if (std::exchange(m_covered, any) != any && onCovered) onCovered(any);
}

void Covers::prepare(const std::vector<X11Surface*>& surfaces) {
    for (X11Surface* surface : surfaces)
        surface->prepare(m_resting);
    if (surfaces.empty() || !m_live) return;
    std::vector<LiveBlur::Behind> behinds;
    std::vector<PixelRect> areas;
    for (const X11Surface* surface : surfaces) {
        if (!surface->isLive()) continue;
        behinds.push_back({*surface->backdrop(), surface->pixels()});
        areas.push_back(surface->pixels());
    }
    const auto pending = m_live->request(behinds, areas);
    // The server redirects while this process blurs.
    if (!m_live->isFollowing()) m_live->hold();
    for (const X11Surface* surface : surfaces) {
        m_live->exempt(surface->sentinel());
        m_live->exempt(surface->window());
    }
    m_connection.flush();
    const auto received = m_live->receive(pending);
    for (X11Surface* surface : surfaces)
        if (surface->isLive())
            surface->sourceAnswered(std::ranges::find(received, surface->backdrop()) !=
                                    received.end());
}

void Covers::followDesktop() {
    m_live->follow(
        [this](xcb_window_t window) { return !m_stacking.holds(window) && !own(window); });
    m_sinceFrame.start();
    scheduleFrame();
}

void Covers::showAll(const std::vector<X11Surface*>& surfaces) {
    holdOverlay();
    const Overlay* const overlay = wantsOverlay() ? m_overlay.get() : nullptr;
    // Nobody else draws or looks between the first window's appearance and the last one's picture.
    xcb_grab_server(m_connection.xcb());
    m_stacking.restack();
    paint([&] {
        if (overlay) overlay->show();
        for (X11Surface* surface : surfaces)
            surface->show(overlay);
    });
    xcb_ungrab_server(m_connection.xcb());
    m_connection.flush();
}

// --- The overlay

/// Where a compositor runs, its order of windows, its settings and its own views decide over what
/// is seen of ours; not so in the overlay.
bool Covers::wantsOverlay() const {
    if (!wantToShow()) return false;
    if (!m_compositor.isOwned()) return m_overlay && m_afterCompositor.isActive();
    return m_connection.canBlurLive() && m_connection.hasShape() &&
           m_compositor.owner() != m_overpainter;
}

void Covers::holdOverlay() {
    if (std::exchange(m_overlayLost, false)) dropOverlay();
    if (m_overlay || !wantsOverlay()) return;
    m_overlay = std::make_unique<Overlay>(m_connection, m_compositor, [this](xcb_window_t window) {
        return m_stacking.holds(window) && !own(window);
    });
    m_overlay->onLost = [this] {
        m_overlayLost = true;
        scheduleCommit();
    };
    m_overlay->onDrawnOver = [this] {
        m_overpainter = m_compositor.owner();
        scheduleCommit();
    };
    // One that came while covered tells by what it draws.
    if (m_covered || !m_overlay->isDrawnOver()) return;
    m_overpainter = m_compositor.owner();
    m_overlay.reset();
}

void Covers::dropOverlay() {
    for (X11Surface* surface : m_surfaces)
        surface->dropPane();
    m_overlay.reset();
    m_above.stop();
}

// --- Painting

void Covers::scheduleFrame() {
    if (m_frame.isActive()) return;
    const auto wait = frameMilliseconds - m_sinceFrame.elapsed();
    m_frame.start(static_cast<int>(std::max<qint64>(wait, 0)));
}

void Covers::drawFrame() {
    m_sinceFrame.start();
    const auto changed = m_live->update();
    std::vector<LiveBlur::Behind> behinds;
    for (const X11Surface* surface : m_surfaces)
        if (surface->isMapped() && surface->isLive())
            behinds.push_back({*surface->backdrop(), surface->pixels()});
    const auto received = m_live->receive(m_live->request(behinds, changed));
    paint([&] {
        for (X11Surface* surface : m_surfaces)
            if (std::ranges::find(received, surface->backdrop()) != received.end())
                surface->refresh();
    });
}

/// What of ours stands above the covers has changed.
void Covers::drawAbove() {
    const auto areas = m_overlay->update();
    paint([&] {
        for (X11Surface* surface : m_surfaces)
            surface->paintAbove(areas);
    });
}

/// Whatever is painted of covers while they stand on the screen is painted in here.
void Covers::paint(const std::function<void()>& paintCovers) {
    if (m_overlay)
        m_overlay->paint(paintCovers);
    else
        paintCovers();
    m_connection.flush();
}

} // namespace WindowServer
