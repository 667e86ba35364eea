#pragma once

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QObject>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Keeps the toolkit (Qt 6.4) from a fault of its own: as the desktop's cursor theme changes, it
/// calls the cursors of all monitors that there ever were, and those of monitors that have gone are
/// freed memory. So once one has gone, the toolkit hears no more of the desktop's settings from the
/// next change of that theme on.
class CursorThemeFilter : public QObject, public QAbstractNativeEventFilter {
public:
    /// Belongs to the application, over whose connection the toolkit hears.
    explicit CursorThemeFilter(Connection& connection);

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    void monitorGone();
    QByteArray themeSerial(xcb_window_t owner) const;

    Connection& m_connection;
    const xcb_atom_t m_selection;
    const xcb_atom_t m_settings;
    QByteArray m_known; ///< The theme's serial as the first monitor went. Null before.
};

} // namespace WindowServer
