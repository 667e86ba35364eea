#include "AppKit/NSApplication.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusReply>
#include <QVariantMap>

namespace {

const QString quitAction = "quit";
constexpr int busPatience = 500; // Milliseconds; a sound bus answers within one.

/// Empty where there is none to be known by.
QString ownIdentifier() {
    return QString::fromStdString(NSBundle::mainBundle().bundleIdentifier().value_or(""));
}

/// Where an instance has its object on the bus.
QString ownPath() { return '/' + ownIdentifier().replace('.', '/'); }

/// What all instances ask to own. The first one does, and the others stand in the bus's queue.
QString queueOf(const QString& identifier) { return identifier + ".Instances"; }

QDBusMessage busCall(const char* method, const QString& name) {
    return QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", method)
           << name;
}

QDBusMessage callOf(const QString& instance, const char* method) {
    return QDBusMessage::createMethodCall(instance, ownPath(), "org.freedesktop.Application",
                                          method);
}

/// By their own names on the bus, oldest first.
QStringList instancesOf(const QString& identifier) {
    const QDBusReply<QStringList> queue = QDBusConnection::sessionBus().call(
        busCall("ListQueuedOwners", queueOf(identifier)), QDBus::Block, busPatience);
    return queue.value();
}

bool sendQuit(const QString& instance) {
    return QDBusConnection::sessionBus().send(callOf(instance, "ActivateAction")
                                              << quitAction << QVariantList() << QVariantMap());
}

/// This process as other instances and the desktop see it.
class Instance : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public slots:
    /// The request that made the bus start this very process is its launch, and calls nothing. It
    /// comes before our own.
    void Activate(const QVariantMap&) {
        if (message().service() == connection().baseService())
            m_isLaunched = true;
        else if (m_isLaunched)
            NSApp->reopen();
    }

    // Of two instances that start at once and ask each other, the older one goes.
    void ActivateAction(const QString& name, const QVariantList&, const QVariantMap&) {
        if (name != quitAction)
            return sendErrorReply(QDBusError::InvalidArgs, "There is no action " + name + ".");
        const QStringList instances = instancesOf(ownIdentifier());
        const QString sender = message().service();
        const auto place = instances.indexOf(sender);
        if (place < 0 || place >= instances.indexOf(connection().baseService()))
            return NSApp->terminate(nullptr);
        sendErrorReply(QDBusError::AccessDenied, "A newer instance stays.");
        sendQuit(sender);
    }

private:
    bool m_isLaunched = false;
};

/// Under the identifier desktops ask an application that runs to show itself; the newest does.
void takeIdentifier() {
    const auto bus = QDBusConnection::sessionBus();
    constexpr uint allowReplacement = 1, replaceExisting = 2;
    bus.send(busCall("RequestName", ownIdentifier()) << (allowReplacement | replaceExisting));
    // Whatever the bus had kept for the name comes with it. Our own request comes next.
    bus.send(callOf(bus.baseService(), "Activate") << QVariantMap());
}

/// Makes this process known. Empty where there is no bus, or no identifier.
std::string joinBus() {
    auto bus = QDBusConnection::sessionBus();
    if (ownIdentifier().isEmpty() || !bus.isConnected()) return {};
    auto* const instance = new Instance; // For as long as the process runs.
    bus.registerObject(ownPath(), instance, QDBusConnection::ExportAllSlots);
    // Not waited for: the bus works through our messages in order.
    constexpr uint queued = 0;
    bus.send(busCall("RequestName", queueOf(ownIdentifier())) << queued);
    // What comes before the loop runs, Qt keeps, and may then deliver out of order.
    QMetaObject::invokeMethod(instance, takeIdentifier, Qt::QueuedConnection);
    return bus.baseService().toStdString();
}

} // namespace

std::shared_ptr<NSRunningApplication> NSRunningApplication::currentApplication() {
    static const std::shared_ptr<NSRunningApplication> current(new NSRunningApplication(joinBus()));
    return current;
}

std::vector<std::shared_ptr<NSRunningApplication>>
NSRunningApplication::runningApplicationsWithBundleIdentifier(const std::string& bundleIdentifier) {
    std::vector<std::shared_ptr<NSRunningApplication>> applications;
    for (const QString& name : instancesOf(QString::fromStdString(bundleIdentifier)))
        applications.emplace_back(new NSRunningApplication(name.toStdString()));
    return applications;
}

bool NSRunningApplication::isEqual(const NSObject& other) const {
    const auto* application = dynamic_cast<const NSRunningApplication*>(&other);
    return application && application->m_busName == m_busName;
}

bool NSRunningApplication::terminate() {
    return !m_busName.empty() && sendQuit(QString::fromStdString(m_busName));
}

#include "NSRunningApplication.moc"
