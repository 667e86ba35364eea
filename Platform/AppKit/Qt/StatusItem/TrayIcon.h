#pragma once

#include "AppKit/NSStatusBar.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QRect>

/// A status bar's button as one kind of tray shows it, while it has an image.
class TrayItem {
public:
    explicit TrayItem(NSStatusBarButton& button) : m_button(button) {}
    virtual ~TrayItem() = default;

    /// Shows the button's image and texts as they are now.
    virtual void refresh() = 0;
    /// Where it stands on the screen; the pointer's place where the tray does not tell.
    virtual QRect place() const = 0;

protected:
    const NSImage& image() const { return *m_button.image(); }
    QString description() const {
        return QString::fromStdString(image().accessibilityDescription());
    }
    /// Lets the button answer, unless the item is gone then, once the call at hand is done: no tray
    /// waits for a menu to close.
    void click(NSEventType type, Qt::KeyboardModifiers modifiers = {});

    NSStatusBarButton& m_button;

private:
    QObject m_life; ///< Clicks end with it.
};

/// In a tray on the X server: a window that the tray takes in, and that shows its ground.
std::unique_ptr<TrayItem> dockedIcon(NSStatusBarButton& button);

/// In a tray on the session bus, by the StatusNotifierItem protocol. It names no menu, so that a
/// right click comes here and opens the program's own, above the covers.
std::unique_ptr<TrayItem> notifierItem(NSStatusBarButton& button);

/// In a tray that draws it itself and tells of its presses.
std::unique_ptr<TrayItem> drawnIcon(NSStatusBarButton& button);

/// Whom an item on the bus makes itself known to.
inline const QString notifierWatcher = "org.kde.StatusNotifierWatcher";
inline const QString notifierWatcherPath = "/StatusNotifierWatcher";

/// A status bar's button in the desktop's tray. One on the X server comes first: there clicks, menu
/// and accessible element are the program's own, where many a tray on the bus draws menus itself,
/// under the cover, or opens one at a click that should toggle. Those of Plasma and LXQt do not,
/// and their trays on the X server only hand on to them.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    explicit TrayIcon(NSStatusBarButton& button);
    ~TrayIcon() override;

    void update();
    QRect place() const; ///< The pointer's place where there is no tray either.

private slots:
    void askForHost();
    void take(const QDBusMessage& answer = {});

private:
    /// Of an item; null for none.
    using Maker = std::unique_ptr<TrayItem> (*)(NSStatusBarButton&);
    Maker best() const;
    void leave(Maker maker);
    void choose();

    NSStatusBarButton& m_button;
    QDBusServiceWatcher m_watchers;
    std::optional<bool> m_hasHost; ///< Whether there is a tray on the bus, once that is known.
    Maker m_maker = nullptr;
    std::unique_ptr<TrayItem> m_item;
};
