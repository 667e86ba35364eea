#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <functional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Whether a panel takes status icons on this server: one that does owns the tray's selection and
/// announces itself to those who hear of the root window's structure.
///
/// The toolkit makes its icon's window anew at an announcement. One that was made between ours
/// and the toolkit's would be seen and die again, so the toolkit's is listened to.
class TrayWatch : private QAbstractNativeEventFilter {
public:
    explicit TrayWatch(Connection& connection);

    /// Finds the panel that is there already, and hears of others from now on. To be called when
    /// the application object exists.
    void attach();

    bool isPresent() const { return m_owner != XCB_WINDOW_NONE; }
    /// Called as a panel comes or goes, or hands over to another.
    std::function<void()> onChanged;

    /// Takes the connection's own events: the end of a panel.
    void handle(const xcb_generic_event_t& event);

private:
    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr*) override;
    void look();
    void lookAgain();

    Connection& m_connection;
    xcb_atom_t m_selection;
    xcb_atom_t m_announcement;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    QObject m_turn; ///< What is put off to the next turn ends with it.
};

} // namespace WindowServer
