#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <string>

namespace Harness {

/// A system tray of the StatusNotifier kind: icons make themselves known on the session bus, and
/// hear of their clicks there.
class NotifierTray : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ version)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

public:
    explicit NotifierTray(const std::string& busAddress);
    ~NotifierTray() override;

    bool hasHost() const { return true; }
    int version() const { return 0; }
    QStringList items() const { return m_items; } ///< The icons that have come, the newest last.

    QVariant property(const QString& name); ///< Of the newest icon.

    /// The clicks on the newest icon, with the point of the screen that they went to.
    void click(int x, int y);
    void rightClick(int x, int y);

    int answered() const { return m_answered; } ///< How many clicks the icon has acknowledged.

public slots:
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString&) {}

signals:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierHostRegistered();

private:
    void call(const QString& method, int x, int y);

    QDBusConnection m_bus;
    QStringList m_items;
    int m_answered = 0;
};

} // namespace Harness
