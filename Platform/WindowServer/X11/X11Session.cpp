#include "WindowServer/X11/X11Session.h"

#include "Foundation/NSLog.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/CursorThemeFilter.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/ToolkitWindows.h"
#include "WindowServer/X11/Windows/X11Surface.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

namespace WindowServer {

namespace {

constexpr int frameMilliseconds = 33; ///< At most 30 frames a second.

/// For so long the overlay outlives its compositor: until another has taken its place, or what
/// needs one has taken on another form.
constexpr int afterCompositorMilliseconds = 1000;

// Return codes of the window server's calls.
constexpr int illegalArgument = 1001;
constexpr int notImplemented = 1006;

double scaleOf(const std::string& output) {
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->name().toStdString() == output) return screen->devicePixelRatio();
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->devicePixelRatio() : 1;
}

} // namespace

std::unique_ptr<X11Session> X11Session::connect() {
    auto connection = Connection::open();
    if (!connection) return nullptr;
    return std::unique_ptr<X11Session>(new X11Session(std::move(connection)));
}

X11Session::X11Session(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection)), m_monitors(*m_connection), m_stacking(*m_connection),
      m_tray(*m_connection), m_compositor(*m_connection), m_struts(*m_connection),
      m_settings(*m_connection), m_key(*m_connection), m_focus(*m_connection),
      m_guard(*m_connection, [this](const CGRect& frame) {
          const Display* display = displayAt(frame);
          return display ? pixelsOf(frame, *display) : PixelRect();
      }) {
    for (QTimer* timer : {&m_commit, &m_frame, &m_above, &m_afterCompositor, &m_displayRefresh}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    QObject::connect(&m_commit, &QTimer::timeout, &m_commit, [this] { commit(); });
    QObject::connect(&m_frame, &QTimer::timeout, &m_frame, [this] { drawFrame(); });
    QObject::connect(&m_afterCompositor, &QTimer::timeout, &m_commit, [this] { commit(); });
    QObject::connect(&m_above, &QTimer::timeout, &m_above, [this] { drawAbove(); });
    QObject::connect(&m_displayRefresh, &QTimer::timeout, &m_displayRefresh,
                     [this] { refreshDisplays(); });
}

X11Session::~X11Session() = default;

void X11Session::attach() {
    m_connection->onEvent = [this](const xcb_generic_event_t& event) { handle(event); };
    m_connection->onRefusal = [this] { coverPlainly(); };
    m_connection->attach();
    new CursorThemeFilter(*m_connection);
    m_tray.onChanged = [this] {
        if (onTrayChanged) onTrayChanged();
    };
    m_key.onPressed = [this] {
        if (onKeyPressed) onKeyPressed();
    };
    m_compositor.onChanged = [this] {
        // A new one is about to show all that the covers hide, in an order of its own.
        isComposited() ? commit() : m_afterCompositor.start(afterCompositorMilliseconds);
        if (onCompositingChanged) onCompositingChanged();
    };
    m_settings.onChanged = [this] {
        if (onThemeChanged) onThemeChanged();
    };
    selectRootEvents();
    m_tray.look();
    watchDisplays();
    m_displays = readDisplays();
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &m_commit, [this] { leaveScreen(); });
}

/// Returns when the server has cleared the screen, so that it is clear when the process has ended.
void X11Session::leaveScreen() {
    for (X11Surface* surface : m_surfaces)
        surface->hide(false);
    m_overlay.reset();
    settle();
}

/// Waits until the server has carried out all that it was asked for.
void X11Session::settle() const {
    m_connection->reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection->xcb()));
}

/// The server tells of its monitors; Qt, in its own time, of their scales.
void X11Session::watchDisplays() {
    if (m_connection->events().randr)
        xcb_randr_select_input(m_connection->xcb(), m_connection->root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    const auto refresh = [this] { m_displayRefresh.start(0); };
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_displayRefresh, refresh);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_displayRefresh, refresh);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_displayRefresh, refresh);
}

std::vector<Display> X11Session::readDisplays() {
    auto displays = m_monitors.query(scaleOf);
    m_struts.look();
    for (Display& display : displays) {
        const PixelRect usable = m_struts.usable(display.pixels);
        const double top = display.frame.origin.y + display.frame.size.height;
        const double down = (usable.y - display.pixels.y + usable.height) / display.scale;
        display.visibleFrame =
            CGRectMake(display.frame.origin.x + (usable.x - display.pixels.x) / display.scale,
                       top - down, usable.width / display.scale, usable.height / display.scale);
    }
    return displays;
}

void X11Session::refreshDisplays() {
    auto displays = readDisplays();
    if (displays == m_displays) return;
    m_displays = std::move(displays);
    for (X11Surface* surface : m_surfaces)
        surface->place();
    m_guard.placeAgain();
    if (onDisplaysChanged) onDisplaysChanged();
}

std::unique_ptr<Surface> X11Session::makeSurface() {
    auto surface = std::make_unique<X11Surface>(*this, *m_connection);
    remember(*surface);
    return surface;
}

void X11Session::forget(X11Surface& surface) {
    std::erase(m_surfaces, &surface);
    unstack(surface);
    scheduleCommit();
}

void X11Session::stack(const X11Surface& surface) {
    m_stacking.add(surface.sentinel(), surface.level());
    m_stacking.add(surface.window(), surface.level());
}

void X11Session::unstack(const X11Surface& surface) {
    m_stacking.remove(surface.sentinel());
    m_stacking.remove(surface.window());
}

void X11Session::exempt(const X11Surface& surface) {
    if (!m_live || !m_live->isFollowing()) return;
    m_live->exempt(surface.sentinel());
    m_live->exempt(surface.window());
}

void X11Session::raise(const X11Surface& surface) {
    stack(surface);
    m_stacking.restack();
}

int X11Session::setBackgroundBlurRadius(int surfaceNumber, int radius) {
    if (!canBlurLive()) return notImplemented;
    for (X11Surface* surface : m_surfaces) {
        if (surface->number() != surfaceNumber) continue;
        surface->setRadius(radius);
        return 0;
    }
    return illegalArgument;
}

void X11Session::setLevel(ToolkitWindow window, int level) {
    m_stacking.add(static_cast<xcb_window_t>(window), level);
    m_guard.add(window);
    m_orderStale = true;
    scheduleCommit();
}

void X11Session::dropLevel(ToolkitWindow window) {
    m_stacking.remove(static_cast<xcb_window_t>(window));
    m_guard.forget(window);
    scheduleCommit();
}

bool X11Session::hasWindowManager() const {
    const auto check = m_connection->reply(
        xcb_get_property_reply,
        xcb_get_property(m_connection->xcb(), false, m_connection->root(),
                         m_connection->atom("_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 0, 1));
    if (!check || xcb_get_property_value_length(check.get()) == 0) return false;
    // A manager that has died may have left its name behind, but not its window.
    const auto window = *static_cast<xcb_window_t*>(xcb_get_property_value(check.get()));
    return m_connection->reply(xcb_get_window_attributes_reply,
                               xcb_get_window_attributes(m_connection->xcb(), window)) != nullptr;
}

void X11Session::takeKeyboard(ToolkitWindow window) {
    m_focus.take(static_cast<xcb_window_t>(window));
}

void X11Session::giveKeyboardBack(ToolkitWindow window) {
    m_focus.giveBack(static_cast<xcb_window_t>(window));
}

void X11Session::setName(ToolkitWindow window, const std::string& instance) {
    setToolkitName(*m_connection, window, instance);
}

bool X11Session::place(ToolkitWindow window, const CGRect& frame) {
    m_guard.place(window, frame);
    scheduleCommit();
    return true;
}

void X11Session::setShape(ToolkitWindow window, Region region,
                          const std::vector<PixelRect>& rectangles) {
    m_guard.set(window, region, rectangles);
    scheduleCommit();
}

void X11Session::setShadowMargin(ToolkitWindow window, int margin) {
    setToolkitShadowMargin(*m_connection, window, margin);
}

Snapshot X11Session::grabAround(ToolkitWindow window, int margin) {
    return grabAroundToolkit(*m_connection, window, margin);
}

const Display* X11Session::displayAt(const CGRect& frame) const {
    const auto same = std::ranges::find(m_displays, frame, &Display::frame);
    if (same != m_displays.end()) return &*same;
    const CGPoint middle{CGRectGetMidX(frame), CGRectGetMidY(frame)};
    const auto holder = std::ranges::find_if(m_displays, [&](const Display& display) {
        return CGRectContainsPoint(display.frame, middle);
    });
    return holder == m_displays.end() ? nullptr : &*holder;
}

void X11Session::handle(const xcb_generic_event_t& event) {
    m_tray.handle(event);
    m_key.handle(event);
    m_compositor.handle(event);
    m_settings.handle(event);
    const int type = typeOf(event);
    if (m_connection->events().randr && (type == m_connection->events().randr ||
                                         type == m_connection->events().randr + XCB_RANDR_NOTIFY))
        m_displayRefresh.start(0);
    handleOwnWindow(type, event);
    handleToolkitWindow(type, event);
    m_stacking.handle(event);
    if (m_live && m_live->handle(event)) scheduleFrame();
    // Last, for it may have to ask the server.
    if (m_struts.handle(event)) m_displayRefresh.start(0);
    if (m_overlay && m_overlay->handle(event)) m_above.start(0);
}

void X11Session::handleOwnWindow(int type, const xcb_generic_event_t& event) {
    const auto surfaceOf = [this](xcb_window_t window) -> X11Surface* {
        const auto found = std::ranges::find_if(
            m_surfaces, [window](const X11Surface* each) { return each->owns(window); });
        return found == m_surfaces.end() ? nullptr : *found;
    };
    if (type == XCB_EXPOSE) {
        const auto& expose = as<xcb_expose_event_t>(event);
        const auto found = std::ranges::find_if(m_surfaces, [&](const X11Surface* each) {
            return each->window() == expose.window ||
                   (each->pane() && each->pane()->window() == expose.window);
        });
        if (found != m_surfaces.end()) paint([&] { (*found)->expose(expose); });
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = as<xcb_configure_notify_event_t>(event);
        // All that the server tells of monitors that a user draws up.
        if (notify.window == m_connection->root()) m_displayRefresh.start(0);
        auto* surface = surfaceOf(notify.window);
        if (surface && notify.window == surface->window()) surface->restore(notify);
    } else if (type == XCB_VISIBILITY_NOTIFY) {
        const auto& notify = as<xcb_visibility_notify_event_t>(event);
        auto* surface = surfaceOf(notify.window);
        if (surface && notify.state != XCB_VISIBILITY_FULLY_OBSCURED && !isComposited())
            surface->sentinelSeen();
    } else if (type == XCB_UNMAP_NOTIFY) {
        const auto& notify = as<xcb_unmap_notify_event_t>(event);
        if (auto* surface = surfaceOf(notify.window)) surface->restore(notify);
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& notify = as<xcb_destroy_notify_event_t>(event);
        if (auto* surface = surfaceOf(notify.window)) surface->replace();
    } else if (type == XCB_REPARENT_NOTIFY) {
        const auto& notify = as<xcb_reparent_notify_event_t>(event);
        auto* surface = surfaceOf(notify.window);
        if (surface && notify.parent != m_connection->root()) surface->replace();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& notify = as<xcb_property_notify_event_t>(event);
        if (auto* surface = surfaceOf(notify.window)) surface->restore(notify);
    } else if (m_connection->hasShape() &&
               type == m_connection->events().shape + XCB_SHAPE_NOTIFY) {
        const auto& notify = as<xcb_shape_notify_event_t>(event);
        if (auto* surface = surfaceOf(notify.affected_window)) surface->restore(notify);
    }
}

void X11Session::handleToolkitWindow(int type, const xcb_generic_event_t& event) {
    xcb_window_t window = XCB_NONE;
    if (type == XCB_UNMAP_NOTIFY)
        window = as<xcb_unmap_notify_event_t>(event).window;
    else if (type == XCB_DESTROY_NOTIFY)
        window = as<xcb_destroy_notify_event_t>(event).window;
    else if (type == XCB_REPARENT_NOTIFY)
        window = as<xcb_reparent_notify_event_t>(event).window;
    m_guard.handle(event);
    if (window != XCB_NONE && m_stacking.holds(window) && onWindowGone) onWindowGone(window);
}

void X11Session::commit() {
    hideUnwanted();
    const auto wantsLive = [](const X11Surface* surface) { return surface->wantsLiveBlur(); };
    const bool live = canBlurLive() && !m_resting && std::ranges::any_of(m_surfaces, wantsLive);
    const bool any = std::ranges::any_of(m_surfaces, &X11Surface::wantsToShow);
    watchScreen(any || !m_stacking.isEmpty());
    if (live && !m_live) m_live = std::make_unique<LiveBlur>(*m_connection);
    const bool handsOver = wantsOverlay() != (m_overlay && !m_overlayLost);

    std::vector<X11Surface*> stale;
    std::vector<X11Surface*> shown;
    for (X11Surface* surface : m_surfaces) {
        if (!surface->wantsToShow()) continue;
        if (surface->isStale()) stale.push_back(surface);
        if (surface->isStale() || handsOver) shown.push_back(surface);
    }
    prepare(stale);
    if (!shown.empty())
        showAll(shown);
    else if (m_orderStale)
        m_stacking.restack();
    if (!wantsOverlay()) dropOverlay();
    m_orderStale = false;
    if (!live) {
        m_live.reset();
        m_frame.stop();
    }
    m_guard.watch();
    m_connection->flush();
    if (std::exchange(m_covered, any) != any && onCovered) onCovered(any);
}

/// Where a compositor runs, its order of windows, its settings and its own views decide over what
/// is seen of ours; not so in the overlay.
bool X11Session::wantsOverlay() const {
    if (std::ranges::none_of(m_surfaces, &X11Surface::wantsToShow)) return false;
    if (!isComposited()) return m_overlay && m_afterCompositor.isActive();
    return canBlurLive() && m_connection->hasShape() && m_compositor.owner() != m_overpainter;
}

void X11Session::loseOverlay() {
    m_overlayLost = true;
    scheduleCommit();
}

void X11Session::holdOverlay() {
    if (std::exchange(m_overlayLost, false)) dropOverlay();
    if (m_overlay || !wantsOverlay()) return;
    m_overlay = std::make_unique<Overlay>(*m_connection, m_compositor, [this](xcb_window_t window) {
        return m_stacking.holds(window) && !ownsCover(window);
    });
    m_overlay->onLost = [this] { loseOverlay(); };
    m_overlay->onDrawnOver = [this] {
        m_overpainter = m_compositor.owner();
        scheduleCommit();
    };
    // One that came while covered tells by what it draws.
    if (m_covered || !m_overlay->isDrawnOver()) return;
    m_overpainter = m_compositor.owner();
    m_overlay.reset();
}

void X11Session::dropOverlay() {
    for (X11Surface* surface : m_surfaces)
        surface->dropPane();
    m_overlay.reset();
    m_above.stop();
}

/// Whatever is painted of covers while they stand on the screen is painted in here.
void X11Session::paint(const std::function<void()>& paintCovers) {
    if (m_overlay)
        m_overlay->paint(paintCovers);
    else
        paintCovers();
    m_connection->flush();
}

bool X11Session::ownsCover(xcb_window_t window) const {
    return std::ranges::any_of(
        m_surfaces, [window](const X11Surface* surface) { return surface->owns(window); });
}

void X11Session::setResting(bool rests) {
    if (std::exchange(m_resting, rests) == rests) return;
    for (X11Surface* surface : m_surfaces)
        surface->restingChanged();
    commit();
    settle();
}

void X11Session::hideUnwanted() {
    for (X11Surface* surface : m_surfaces) {
        if (surface->wantsToShow()) continue;
        if (surface->isMapped()) unstack(*surface);
        surface->hide(isComposited());
    }
    m_connection->flush();
}

void X11Session::prepare(const std::vector<X11Surface*>& surfaces) {
    if (surfaces.empty()) return;
    for (X11Surface* surface : surfaces) {
        surface->prepare();
        stack(*surface);
    }
    captureSources(surfaces);
    if (m_live && !m_live->isFollowing()) followDesktop();
}

void X11Session::showAll(const std::vector<X11Surface*>& surfaces) {
    holdOverlay();
    const Overlay* const overlay = wantsOverlay() ? m_overlay.get() : nullptr;
    // Nobody else draws or looks between the first window's appearance and the last one's picture.
    xcb_grab_server(m_connection->xcb());
    m_stacking.restack();
    paint([&] {
        if (overlay) overlay->show();
        for (X11Surface* surface : surfaces)
            surface->show(overlay);
    });
    xcb_ungrab_server(m_connection->xcb());
    m_connection->flush();
}

void X11Session::captureSources(const std::vector<X11Surface*>& surfaces) {
    if (!m_live) return;
    std::vector<LiveBlur::Behind> behinds;
    std::vector<PixelRect> areas;
    for (const X11Surface* surface : surfaces) {
        if (!surface->awaitsSource()) continue;
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
    m_connection->flush();
    const auto received = m_live->receive(pending);
    for (X11Surface* surface : surfaces)
        if (std::ranges::find(received, surface->backdrop()) != received.end())
            surface->sourceArrived();
}

void X11Session::followDesktop() {
    m_live->follow(
        [this](xcb_window_t window) { return !m_stacking.holds(window) && !ownsCover(window); });
    m_sinceFrame.start();
    scheduleFrame();
}

void X11Session::watchScreen(bool watch) {
    if (m_watching == watch) return;
    m_watching = watch;
    selectRootEvents();
}

/// The root's own structure always, for its size tells of new displays; what happens among the
/// windows only while one of ours has to stay above them.
void X11Session::selectRootEvents() {
    uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (m_watching) mask |= XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->xcb(), m_connection->root(), XCB_CW_EVENT_MASK,
                                 &mask);
}

void X11Session::scheduleFrame() {
    if (m_frame.isActive()) return;
    const auto wait = frameMilliseconds - m_sinceFrame.elapsed();
    m_frame.start(static_cast<int>(std::max<qint64>(wait, 0)));
}

void X11Session::drawFrame() {
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
void X11Session::drawAbove() {
    const auto areas = m_overlay->update();
    paint([&] {
        for (X11Surface* surface : m_surfaces)
            for (const PixelRect& area : areas)
                if (Pane* pane = surface->pane()) pane->paint(area);
    });
}

/// What was refused drags after it all that was to be made of it, so the blur begins afresh when a
/// cover is shown next.
void X11Session::coverPlainly() {
    if (!std::exchange(m_wasRefused, true))
        NSLog("X11: the server refused a request, as it does when it is short of memory: the cover "
              "is plain dark until the next one.");
    paint([&] {
        for (X11Surface* surface : m_surfaces)
            if (surface->isMapped()) surface->showPlain();
    });
    m_live.reset();
    m_frame.stop();
    m_connection->excuseRefusals();
    m_connection->flush();
}

} // namespace WindowServer
