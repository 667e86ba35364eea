#pragma once

#include "Harness/Service.h"

#include <QDBusPendingCallWatcher>
#include <QStringList>

namespace Harness {

/// A system tray of the StatusNotifier kind: icons make themselves known on the session bus, and
/// hear of their clicks there.
class NotifierTray : public Service {
public:
    explicit NotifierTray(const QString& busAddress)
        : Service(busAddress, "org.kde.StatusNotifierWatcher") {}

    QStringList items() const { return m_items; } ///< The icons that have come, the newest last.

    /// Of the newest icon.
    QVariant property(const QString& name) const {
        const auto reply =
            m_bus.call(question("org.freedesktop.DBus.Properties", "Get", {item, name}));
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    /// The clicks on the newest icon, with the point of the screen that they went to.
    void click(int x, int y) { call("Activate", x, y); }
    void rightClick(int x, int y) { call("ContextMenu", x, y); }

    int answered() const { return m_answered; } ///< How many clicks the icon has acknowledged.

private:
    QDBusMessage question(const QString& interface, const QString& method,
                          const QVariantList& arguments) const {
        auto message = QDBusMessage::createMethodCall(m_items.value(m_items.size() - 1),
                                                      "/StatusNotifierItem", interface, method);
        message.setArguments(arguments);
        return message;
    }
    void call(const QString& method, int x, int y) {
        auto* watcher =
            new QDBusPendingCallWatcher(m_bus.asyncCall(question(item, method, {x, y})), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [this, watcher] { m_answered += !watcher->isError(); });
    }
    std::optional<QVariantList> answer(const QDBusMessage& asked) override {
        if (asked.member() == "Get") return {{QVariant::fromValue(QDBusVariant(true))}};
        if (asked.member() != "RegisterStatusNotifierItem") return {};
        m_items << asked.arguments().value(0).toString();
        announce("/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
                 "StatusNotifierItemRegistered", {m_items.last()});
        return QVariantList();
    }

    const QString item = "org.kde.StatusNotifierItem";
    QStringList m_items;
    int m_answered = 0;
};

} // namespace Harness
