#include "WindowServer/X11/X11Session.h"

#include "Foundation/NSLog.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/Windows/CursorThemeFilter.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/ToolkitWindows.h"

#include <QGuiApplication>

#include <utility>

namespace WindowServer {

std::unique_ptr<X11Session> X11Session::connect() {
    auto connection = Connection::open();
    if (!connection) return nullptr;
    return std::unique_ptr<X11Session>(new X11Session(std::move(connection)));
}

X11Session::X11Session(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection)), m_displays(*m_connection),
      m_compositor(*m_connection, "_NET_WM_CM_S"), m_tray(*m_connection), m_settings(*m_connection),
      m_key(*m_connection), m_focus(*m_connection), m_stacking(*m_connection),
      m_guard(*m_connection,
              [this](const CGRect& frame) {
                  const Display* display = m_displays.at(frame);
                  return display ? pixelsOf(frame, *display) : PixelRect();
              }),
      m_covers(*m_connection, m_displays, m_compositor, m_stacking) {}

void X11Session::attach() {
    m_connection->onEvent = [this](const xcb_generic_event_t& event) { handle(event); };
    m_connection->onRefusal = [this] { coverPlainly(); };
    m_connection->attach();
    new CursorThemeFilter(*m_connection);
    const auto tell = [](const std::function<void()>& whom) {
        if (whom) whom();
    };
    m_tray.onChanged = [this, tell] { tell(onTrayChanged); };
    m_key.onPressed = [this, tell] { tell(onKeyPressed); };
    m_settings.onChanged = [this, tell] { tell(onThemeChanged); };
    m_compositor.onChanged = [this, tell] {
        m_covers.compositorChanged();
        tell(onCompositingChanged);
    };
    m_displays.onChanged = [this, tell] {
        m_covers.displaysChanged();
        m_guard.placeAgain();
        tell(onDisplaysChanged);
    };
    m_covers.onCommitted = [this] { m_guard.watch(); };
    m_covers.onCovered = [this](bool covered) {
        if (onCovered) onCovered(covered);
    };
    m_stacking.listen(false);
    m_displays.attach();
    // The screen is clear when the process has ended.
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, qGuiApp,
                     [this] { m_covers.leaveScreen(); });
}

void X11Session::setLevel(ToolkitWindow window, int level) {
    m_stacking.add(static_cast<xcb_window_t>(window), level);
    m_guard.add(window);
    m_covers.scheduleCommit();
}

void X11Session::dropLevel(ToolkitWindow window) {
    m_stacking.remove(static_cast<xcb_window_t>(window));
    m_guard.forget(window);
    m_covers.scheduleCommit();
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
    m_covers.scheduleCommit();
    return true;
}

void X11Session::setShape(ToolkitWindow window, Region region,
                          const std::vector<PixelRect>& rectangles) {
    m_guard.set(window, region, rectangles);
    m_covers.scheduleCommit();
}

void X11Session::setShadowMargin(ToolkitWindow window, int margin) {
    setToolkitShadowMargin(*m_connection, window, margin);
}

Snapshot X11Session::grabAround(ToolkitWindow window, int margin) {
    return grabAroundToolkit(*m_connection, window, margin);
}

void X11Session::handle(const xcb_generic_event_t& event) {
    m_tray.handle(event);
    m_key.handle(event);
    m_compositor.handle(event);
    m_settings.handle(event);
    m_displays.handle(event);
    m_covers.handle(event);
    m_guard.handle(event);
    tellOfLoss(event);
    m_stacking.handle(event);
    m_displays.handlePanels(event); // Last, for it may have to ask the server.
}

void X11Session::tellOfLoss(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (type != XCB_UNMAP_NOTIFY && type != XCB_DESTROY_NOTIFY && type != XCB_REPARENT_NOTIFY)
        return;
    const xcb_window_t window = subjectOf(event);
    if (m_stacking.holds(window) && onWindowGone) onWindowGone(window);
}

/// What was refused drags after it all that was to be made of it, so the blur begins afresh when a
/// cover is shown next.
void X11Session::coverPlainly() {
    if (!std::exchange(m_wasRefused, true))
        NSLog("X11: the server refused a request, as it does when it is short of memory: the cover "
              "is plain dark until the next one.");
    m_covers.coverPlainly();
    m_connection->excuseRefusals();
    m_connection->flush();
}

} // namespace WindowServer
