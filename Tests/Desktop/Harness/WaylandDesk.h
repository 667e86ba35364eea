#pragma once

#include "Harness/Folder.h"
#include "Harness/Picture.h"
#include "Harness/Process.h"
#include "Harness/SessionBus.h"
#include "Harness/WaylandInput.h"

#include <QDBusConnection>

#include <optional>

namespace Harness {

/// A Wayland session of one test's own: a real compositor, which draws two outputs that no screen
/// shows, with session bus, home folder, eyes and hands.
class WaylandDesk {
public:
    enum class Kind { Sway, KWin };

    static constexpr Area left = {0, 0, 1024, 640};
    static constexpr Area right = {1024, 0, 1024, 640};
    static constexpr Area bounds = {0, 0, 2048, 640};
    static constexpr Area pieceOfAdded = {2100, 10, 400, 400};

    explicit WaylandDesk(Kind kind);
    ~WaylandDesk();

    /// What the compositor's programs find in theirs.
    const Environment& environment() const { return m_environment; }
    const QString& bus() const { return m_bus.address(); }
    const Folder& home() const { return m_home; }
    const WaylandInput& hand() const { return *m_hand; }
    /// Other devices, for those that there were.
    void plugIn();

    /// It loses all its programs, and a new one listens where it did.
    void restartCompositor();

    std::string run(const std::vector<std::string>& command) const; ///< What it says to the end.
    Picture grab(const Area& area = bounds) const;                  ///< Without the pointer.

    void addOutput() const;             ///< To sway, which cannot take one away.
    void setRightOutput(bool on) const; ///< Of KWin.
    void setBlur(bool on) const;        ///< KWin's own.

private:
    void startCompositor();
    QImage grim() const;
    QImage screenshot() const;

    bool m_isKWin;
    Folder m_home;
    SessionBus m_bus;
    QDBusConnection m_connection;
    Environment m_environment;
    std::optional<Process> m_compositor;
    std::optional<WaylandInput> m_hand;
};

} // namespace Harness
