#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <string>
#include <vector>

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

    /// A row of the newest icon's own menu, which this tray could draw: what it says of itself, and
    /// the rows of its submenu. The menu itself is one without a title.
    struct Row {
        int number = 0;
        QVariantMap properties;
        std::vector<Row> rows;

        QString title() const { return properties.value("label").toString(); }
        std::vector<std::string> titles() const;        ///< Of its rows; empty for a line.
        Row operator[](const std::string& title) const; ///< The first of its rows with this title.
    };
    Row menu();
    void choose(const Row& row);

    int answered() const { return m_answered; } ///< How many clicks the icon has acknowledged.

public slots:
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString&) {}

signals:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierHostRegistered();

private:
    void call(const QString& method, int x, int y);
    QDBusMessage menuCall(const QString& method);

    QDBusConnection m_bus;
    QStringList m_items;
    int m_answered = 0;
};

} // namespace Harness
