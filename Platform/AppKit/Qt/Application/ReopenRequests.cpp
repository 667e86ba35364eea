#include "AppKit/Qt/Application/Launch.h"

#include "Foundation/NSBundle.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QVariantMap>

namespace {

const QString interfaceName = "org.freedesktop.Application";

/// What a desktop asks of an application that it does not start itself.
class ApplicationObject : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationObject(std::function<void()> reopen, QObject* parent)
        : QObject(parent), m_reopen(std::move(reopen)) {}

public slots:
    void Activate(const QVariantMap&) {
        if (message().service() == connection().baseService())
            m_isLaunched = true;
        else if (m_isLaunched)
            m_reopen();
    }
    void ActivateAction(const QString& name, const QVariantList&, const QVariantMap&) {
        sendErrorReply(QDBusError::InvalidArgs, "There is no action " + name + ".");
    }
    void Open(const QStringList&, const QVariantMap&) {
        sendErrorReply(QDBusError::NotSupported, "This application opens no files.");
    }

private:
    const std::function<void()> m_reopen;
    bool m_isLaunched = false;
};

void takeName(const QString& name, ApplicationObject* object) {
    const QString path = '/' + QString(name).replace('.', '/');
    auto bus = QDBusConnection::sessionBus();
    bus.registerObject(path, object, QDBusConnection::ExportAllSlots);

    constexpr uint allowReplacement = 1, replaceExisting = 2;
    auto take = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                               "org.freedesktop.DBus", "RequestName");
    bus.send(take << name << (allowReplacement | replaceExisting));
    // Whatever the bus had kept for the name comes with it. Our own request comes next.
    auto own = QDBusMessage::createMethodCall(bus.baseService(), path, interfaceName, "Activate");
    bus.send(own << QVariantMap());
}

} // namespace

void answerReopenRequests(std::function<void()> reopen) {
    const auto identifier = NSBundle::mainBundle().bundleIdentifier();
    if (!identifier || !QDBusConnection::sessionBus().isConnected()) return;
    const QString name = QString::fromStdString(*identifier);
    auto* const object = new ApplicationObject(std::move(reopen), qApp);
    // Queued: what comes before the loop runs, Qt keeps, and may then deliver out of order.
    QMetaObject::invokeMethod(
        object, [name, object] { takeName(name, object); }, Qt::QueuedConnection);
}

#include "ReopenRequests.moc"
