#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Works around a fault of Qt 6.4: at a change of the cursor theme it calls the cursors of all
/// monitors that there ever were, and those of unplugged ones are freed memory. Once a monitor has
/// gone, the desktop's settings are kept from Qt.
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
