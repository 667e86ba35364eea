#pragma once

#include "AppKit/Qt/StatusItem/TrayIcon.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QGuiApplication>
#include <QList>
#include <QMetaType>
#include <QString>

/// A picture as it goes over the bus: 0xAARRGGBB for each pixel, the highest byte first.
struct NotifierPicture {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using NotifierPictures = QList<NotifierPicture>;
Q_DECLARE_METATYPE(NotifierPicture)
Q_DECLARE_METATYPE(NotifierPictures)

struct NotifierToolTip {
    QString icon;
    NotifierPictures pictures;
    QString title;
    QString text;
};
Q_DECLARE_METATYPE(NotifierToolTip)

/// The icon in a tray on the session bus, by the StatusNotifierItem protocol. It names no menu that
/// the tray could draw, so that a click with the right button comes here and opens the program's
/// own, above the covers.
class NotifierItem : public QObject, public TrayItem {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(NotifierPictures IconPixmap READ iconPixmap)
    Q_PROPERTY(QString IconAccessibleDesc READ description)
    Q_PROPERTY(NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)

public:
    static const QString watcherService;
    static const QString watcherPath;

    explicit NotifierItem(NSStatusBarButton& button);
    ~NotifierItem() override;

    void refresh() override;
    QRect place() const override;

    QString category() const { return "SystemServices"; }
    QString id() const { return QGuiApplication::desktopFileName(); }
    QString status() const { return "Active"; }
    bool itemIsMenu() const { return false; }
    QString title() const; ///< What trays read out: the program, and what a click does next.
    QString description() const;
    QString iconName() const;
    NotifierPictures iconPixmap() const;
    NotifierToolTip toolTip() const;

public slots:
    // The clicks, with the point of the screen that they went to.
    void Activate(int x, int y);
    void ContextMenu(int x, int y);

signals:
    void NewTitle();
    void NewIcon();
    void NewToolTip();

private:
    NSStatusBarButton& m_button;
    QDBusConnection m_bus;
};
