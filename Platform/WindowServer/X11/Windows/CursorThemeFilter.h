#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Keeps the toolkit (Qt 6.4) from a fault of its own: as the desktop's cursor theme changes, it
/// calls the cursors of all monitors that there ever were, and those of monitors that have gone are
/// freed memory. So once one has gone, the toolkit hears no more of the desktop's settings.
class CursorThemeFilter : public QObject, public QAbstractNativeEventFilter {
public:
    /// Belongs to the application, over whose connection the toolkit hears.
    explicit CursorThemeFilter(Connection& connection);

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

private:
    const xcb_atom_t m_settings;
    bool m_monitorHasGone = false;
};

} // namespace WindowServer
