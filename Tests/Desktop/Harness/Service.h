#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <optional>
#include <stdexcept>

namespace Harness {

/// A program that has a name on a bus, and answers what it is asked there.
class Service : public QDBusVirtualObject {
public:
    Service(const QString& busAddress, const QString& name)
        : m_bus(QDBusConnection::connectToBus(busAddress, name)) {
        if (!m_bus.registerVirtualObject("/", this, QDBusConnection::SubPath) ||
            !m_bus.registerService(name))
            throw std::runtime_error("nobody can be " + name.toStdString());
    }
    ~Service() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    void send(QDBusMessage message, const QVariantList& arguments) const {
        message.setArguments(arguments);
        m_bus.send(message);
    }
    void announce(const char* path, const char* interface, const char* signal,
                  const QVariantList& arguments) const {
        send(QDBusMessage::createSignal(path, interface, signal), arguments);
    }

protected:
    /// Nothing where there is no such method, and no such property or setting.
    virtual std::optional<QVariantList> answer(const QDBusMessage& question) = 0;

    QDBusConnection m_bus;

private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override {
        const auto arguments = answer(question);
        return bus.send(arguments ? question.createReply(*arguments)
                                  : question.createErrorReply(QDBusError::Failed, "no such thing"));
    }
};

} // namespace Harness
