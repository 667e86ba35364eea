// Answers, signals and calls on the buses, of which nothing is what was agreed upon.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Dice.h"
#include "Harness/SessionBus.h"
#include "Harness/Soak.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <cmath>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

QVariant anything(Dice& dice, int depth = 0) {
    switch (dice.below(depth < 4 ? 11 : 7)) {
    case 0:
        return static_cast<int>(dice.number());
    case 1:
        return dice.number();
    case 2:
        return dice.below(2) == 0;
    case 3:
        return std::vector{1e300, -1e300, 0.5, std::nan("")}[dice.below(4)];
    case 4:
        return QString(static_cast<qsizetype>(dice.below(5000)), QChar('x'));
    case 5:
        return QVariant::fromValue(QDBusObjectPath("/a/b"));
    case 6:
        return QByteArray(static_cast<qsizetype>(dice.below(5000)), '\xff');
    case 7:
        return QVariant::fromValue(QDBusVariant(anything(dice, depth + 1)));
    case 8:
        return QVariantMap{{"desktop-startup-id", anything(dice, depth + 1)}, {"", 1}};
    case 9:
        return QVariantList{anything(dice, depth + 1), anything(dice, depth + 1)};
    default:
        return QStringList{"org.freedesktop.appearance", "contrast", ""};
    }
}

QVariantList anythings(Dice& dice) {
    QVariantList list;
    for (size_t left = dice.below(4); left > 0; --left)
        list << anything(dice);
    return list;
}

/// Takes the names of the services that the program asks, and answers and announces nonsense.
class Babbler : public QDBusVirtualObject {
public:
    Babbler(const std::string& busAddress, const QString& name, Dice& dice)
        : m_name(name),
          m_bus(QDBusConnection::connectToBus(QString::fromStdString(busAddress), name)),
          m_dice(dice) {
        m_bus.registerVirtualObject("/", this, QDBusConnection::SubPath);
        EXPECT_TRUE(m_bus.registerService(name));
    }
    ~Babbler() override { QDBusConnection::disconnectFromBus(m_name); }

    void announce(const QString& path, const QString& interface, const QString& signal) {
        auto message = QDBusMessage::createSignal(path, interface, signal);
        const QVariantList agreed = {"org.freedesktop.appearance",
                                     m_dice.below(2) ? "contrast" : "color-scheme"};
        message.setArguments((m_dice.below(2) ? agreed : QVariantList()) + anythings(m_dice));
        m_bus.send(message);
    }

    void call(const QString& service, const QString& path, const QString& interface,
              const QString& method) {
        auto message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setAutoStartService(false);
        m_bus.send(message << anything(m_dice) << anythings(m_dice));
    }

    int asked() const { return m_asked; } ///< How many questions it has answered.

private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        ++m_asked;
        connection.send(m_dice.below(4) ? message.createReply(anythings(m_dice))
                                        : message.createErrorReply("com.example.No", "no"));
        return true;
    }

    int m_asked = 0;
    const QString m_name;
    QDBusConnection m_bus;
    Dice& m_dice;
};

} // namespace

TEST(BusNoise, DoesNoHarm) {
    Dice dice;
    Desktop desktop;
    const SessionBus system;
    desktop.extra["DBUS_SYSTEM_BUS_ADDRESS"] = system.address();
    const auto& session = desktop.bus->address();
    Babbler portal(session, "org.freedesktop.portal.Desktop", dice);
    Babbler logind(system.address(), "org.freedesktop.login1", dice);
    Agent agent(desktop);
    agent.cover();
    ASSERT_TRUE(await([&] { return portal.asked() > 0 && logind.asked() > 0; }));
    for (int i = 0; i < rounds(500, 20000); ++i) {
        portal.announce("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                        "SettingChanged");
        logind.announce("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                        "PrepareForSleep");
        const char* const methods[] = {"Activate", "ActivateAction", "Open", "Introspect"};
        portal.call("com.vardek.NimbrelLite", "/com/vardek/NimbrelLite",
                    "org.freedesktop.Application", dice.of(methods));
    }
    EXPECT_TRUE(await([&] { return agent.isCovered(); }));
    EXPECT_FALSE(agent.process().status());
    EXPECT_EQ(agent.process().errors(), "");
    agent.uncover();
}
