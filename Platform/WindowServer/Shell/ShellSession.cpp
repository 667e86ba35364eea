#include "WindowServer/Shell/ShellSession.h"

#include "Foundation/NSLog.h"

#include <utility>

namespace WindowServer {

ShellSession::ShellSession(std::unique_ptr<Connection> connection)
    : X11Session(std::move(connection)), m_surfaces(m_link),
      m_windows(X11Session::connection(), X11Session::windows(), m_link),
      m_key(X11Session::key(), m_link), m_tray(X11Session::tray(), m_link) {}

void ShellSession::attach() {
    X11Session::attach();
    m_link.onAttached = [this] {
        m_surfaces.attached();
        m_windows.attached();
        m_key.attached();
        m_tray.changed();
    };
    m_link.onDetached = [this] { m_tray.changed(); };
    m_link.onDismissed = &ShellWindows::closePopups;
    m_link.onKeyPressed = [this] {
        if (m_key.onPressed) m_key.onPressed();
    };
    m_link.attach();
    if (!m_link.isAttached()) NSLog("X11: this is a Wayland session, which cannot be covered.");
}

void ShellSession::handle(const xcb_generic_event_t& event) {
    X11Session::handle(event);
    m_windows.handle(event);
}

} // namespace WindowServer
