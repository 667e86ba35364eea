#pragma once

#include "WindowServer/Desktop.h"
#include "WindowServer/Shell/ShellLink.h"

namespace WindowServer {

/// The Shell's panel; without the extension, whatever tray the X server has.
class ShellTray : public Tray {
public:
    ShellTray(Tray& onServer, ShellLink& link);

    bool draws() const override { return m_link.isAttached(); }
    void draw(const std::optional<TrayFace>& face) override;

    bool isPresent() const override { return m_onServer.isPresent(); }
    TrayLook look() const override { return m_onServer.look(); }
    void dock(WindowId icon, const std::function<void()>& docked) override {
        m_onServer.dock(icon, docked);
    }
    Snapshot groundOfDocked() const override { return m_onServer.groundOfDocked(); }

    /// Another tray is the one to go to.
    void changed() const {
        if (onChanged) onChanged();
    }

private:
    Tray& m_onServer;
    ShellLink& m_link;
};

} // namespace WindowServer
