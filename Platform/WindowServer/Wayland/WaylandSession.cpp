#include "WindowServer/Wayland/WaylandSession.h"

#include "WindowServer/Wayland/Comeback.h"
#include "WindowServer/Wayland/Desktop/PlasmaKey.h"
#include "WindowServer/Wayland/Desktop/PortalKey.h"

namespace WindowServer::Wayland {

std::unique_ptr<WaylandSession> WaylandSession::connect() {
    auto connection = Connection::open();
    if (!connection) return nullptr;
    return std::unique_ptr<WaylandSession>(new WaylandSession(std::move(connection)));
}

WaylandSession::WaylandSession(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection)), m_outputs(*m_connection),
      m_stages(*m_connection, m_outputs), m_windows(*m_connection, m_stages),
      m_covers(*m_connection, m_stages, m_windows), m_seat(*m_connection, m_stages, m_windows) {
    m_connection->settle(); // What the seat has,
    m_connection->settle(); // and how its keyboard is laid out.
}

void WaylandSession::attach() {
    m_connection->onGlobalsChanged = [this] {
        m_outputs.globalsChanged();
        m_covers.changed();
    };
    m_outputs.onRefreshed = [this] { m_stages.outputsChanged(); };
    m_stages.onGoing = [this](const Stage& stage) {
        m_windows.leave(stage);
        m_seat.pointer().leave(stage);
    };
    m_stages.onChanged = [this] {
        m_covers.changed();
        m_windows.stagesChanged();
    };
    m_windows.onMoved = [this] { m_seat.pointer().look(); };
    m_windows.attach();
    m_covers.attach();
    const Keymap& keymap = m_seat.keyboard().keymap();
    if (PlasmaKey::isOffered())
        m_key = std::make_unique<PlasmaKey>(keymap);
    else
        m_key = std::make_unique<PortalKey>(keymap);
    m_connection->onTurnEnd = [this] { finishTurn(); };
    m_connection->attach();
}

/// Outputs first, for the stages stand on them, and the windows on those. All that comes of one
/// turn of the event loop reaches the screen together.
void WaylandSession::finishTurn() {
    if (m_key->onPressed && Comeback::shared().takeUpCover()) m_key->onPressed();
    m_outputs.refreshIfStale();
    m_stages.refreshIfStale();
    m_covers.commit();
    m_windows.commit();
    m_seat.keyboard().follow();
    m_stages.commit();
}

} // namespace WindowServer::Wayland
