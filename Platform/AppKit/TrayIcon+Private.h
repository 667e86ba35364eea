#pragma once

#include "AppKit/TrayMenu+Private.h"

#include <QDBusServiceWatcher>
#include <QObject>
#include <QRect>
#include <QSystemTrayIcon>

#include <memory>

class NSStatusBarButton;

/// A status bar's button in the desktop's tray, from the time there is a tray.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    explicit TrayIcon(NSStatusBarButton& button);
    ~TrayIcon() override;

    /// Shows the button's image and tool tip as they are now, and offers its menu.
    void update();
    void offerMenu();

    /// Where the icon stands on the screen; the pointer's place where the tray does not tell.
    QRect place() const;

    /// A template takes the colour of the application's text, which changes with the desktop's.
    bool eventFilter(QObject* object, QEvent* event) override;

private slots:
    void lookForTray();

private:
    void appearIf(bool hasTray);
    void click(QSystemTrayIcon::ActivationReason reason);

    NSStatusBarButton& m_button;
    QDBusServiceWatcher m_watcherStart;
    TrayMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};
