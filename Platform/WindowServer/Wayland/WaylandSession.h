#pragma once

#include "WindowServer/Session.h"
#include "WindowServer/Wayland/Desktop/Outputs.h"
#include "WindowServer/Wayland/Input/Seat.h"
#include "WindowServer/Wayland/Windows/Covers.h"
#include "WindowServer/Wayland/Windows/StagedWindows.h"
#include "WindowServer/Wayland/Windows/Stages.h"

namespace WindowServer::Wayland {

/// The session on a Wayland compositor that lets a program stand above all others. What the desktop
/// tells its programs, and the tray, are on the session bus there.
class WaylandSession : public Session {
public:
    /// Null where there is no such compositor.
    static std::unique_ptr<WaylandSession> connect();

    void attach() override;
    Displays& displays() override { return m_outputs; }
    Surfaces& surfaces() override { return m_covers; }
    ToolkitWindows& windows() override { return m_windows; }
    GlobalKey& key() override { return *m_key; }
    Settings& settings() override { return m_settings; }
    Tray& tray() override { return m_tray; }

private:
    explicit WaylandSession(std::unique_ptr<Connection> connection);

    void finishTurn();

    std::unique_ptr<Connection> m_connection;
    Outputs m_outputs;
    Stages m_stages;
    StagedWindows m_windows;
    Covers m_covers;
    Seat m_seat;
    std::unique_ptr<GlobalKey> m_key;
    Settings m_settings;
    Tray m_tray;
};

} // namespace WindowServer::Wayland
