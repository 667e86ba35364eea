#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <optional>
#include <stdexcept>
#include <string>

namespace Harness {

/// A program that has a name on a bus, and answers what it is asked there.
class Service : public QDBusVirtualObject {
public:
    Service(const std::string& busAddress, const QString& name)
        : m_bus(QDBusConnection::connectToBus(QString::fromStdString(busAddress), name)) {
        if (!m_bus.registerVirtualObject("/", this, QDBusConnection::SubPath) ||
            !m_bus.registerService(name))
            throw std::runtime_error("nobody can be " + name.toStdString());
    }
    ~Service() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

protected:
    /// Nothing where there is no such method, and no such property or setting.
    virtual std::optional<QVariantList> answer(const QDBusMessage& question) = 0;

    void announce(const QString& path, const QString& interface, const QString& signal,
                  const QVariantList& arguments) const {
        auto message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(arguments);
        m_bus.send(message);
    }

    QDBusConnection m_bus;

private:
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override {
        const auto arguments = answer(question);
        bus.send(arguments ? question.createReply(*arguments)
                           : question.createErrorReply(QDBusError::Failed, "no such thing"));
        return true;
    }
};

} // namespace Harness
