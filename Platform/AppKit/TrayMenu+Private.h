#pragma once

#include "AppKit/NSMenu.h"

#include <QMenu>

class QSystemTrayIcon;

/// The status item's menu for a tray on the session bus that draws menus itself: a copy, which is
/// never opened here.
class TrayMenu {
public:
    /// Makes the tray's copy one of this menu. Does nothing for an icon with a window of its own,
    /// whose menu opens here.
    void offer(const NSMenu& menu, QSystemTrayIcon& icon);

private:
    QMenu m_copy;
};
