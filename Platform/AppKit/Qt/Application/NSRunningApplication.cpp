#include "AppKit/NSApplication.h"

#include "Foundation/NSBundle.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusReply>

namespace {

const QString objectPath = "/Instance";
constexpr int busPatience = 500; // Milliseconds; a sound bus answers within one.

/// What all instances ask to own. The first one does, and the others stand in the bus's queue.
QString queueName(const std::string& bundleIdentifier) {
    return QString::fromStdString(bundleIdentifier) + ".Instances";
}

QDBusMessage busCall(const char* method, const std::string& bundleIdentifier) {
    return QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", method)
           << queueName(bundleIdentifier);
}

/// By their own names on the bus, oldest first.
QStringList instancesOf(const std::string& bundleIdentifier) {
    const QDBusReply<QStringList> queue = QDBusConnection::sessionBus().call(
        busCall("ListQueuedOwners", bundleIdentifier), QDBus::Block, busPatience);
    return queue.value();
}

bool sendTerminate(const QString& instance) {
    return QDBusConnection::sessionBus().send(
        QDBusMessage::createMethodCall(instance, objectPath, {}, "Terminate"));
}

/// This process as the others see it.
class Instance : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "AppKit.NSRunningApplication")

public:
    explicit Instance(std::string bundleIdentifier)
        : m_bundleIdentifier(std::move(bundleIdentifier)) {}

public slots:
    // Of two instances that start at once and ask each other, the older one goes.
    void Terminate() {
        const QStringList instances = instancesOf(m_bundleIdentifier);
        const QString sender = message().service();
        const auto place = instances.indexOf(sender);
        if (place >= 0 && place < instances.indexOf(connection().baseService())) {
            sendErrorReply(QDBusError::AccessDenied, "A newer instance stays.");
            sendTerminate(sender);
            return;
        }
        NSApp->terminate(nullptr);
    }

private:
    const std::string m_bundleIdentifier;
};

/// Makes this process known. Empty where there is no bus, or no identifier to be known by.
std::string joinBus() {
    const auto identifier = NSBundle::mainBundle().bundleIdentifier();
    auto bus = QDBusConnection::sessionBus();
    if (!identifier || !bus.isConnected()) return {};
    auto* const instance = new Instance(*identifier); // For as long as the process runs.
    bus.registerObject(objectPath, instance, QDBusConnection::ExportAllSlots);
    // Not waited for: the bus works through our messages in order.
    constexpr uint queued = 0;
    bus.send(busCall("RequestName", *identifier) << queued);
    return bus.baseService().toStdString();
}

} // namespace

std::shared_ptr<NSRunningApplication> NSRunningApplication::currentApplication() {
    static const std::shared_ptr<NSRunningApplication> current(new NSRunningApplication(joinBus()));
    return current;
}

std::vector<std::shared_ptr<NSRunningApplication>>
NSRunningApplication::runningApplicationsWithBundleIdentifier(const std::string& bundleIdentifier) {
    const QString own = QString::fromStdString(currentApplication()->m_busName);
    QStringList instances = instancesOf(bundleIdentifier);
    const bool isOwn = NSBundle::mainBundle().bundleIdentifier() == bundleIdentifier;
    if (isOwn && !instances.contains(own)) instances.append(own);

    std::vector<std::shared_ptr<NSRunningApplication>> applications;
    for (const QString& name : instances)
        applications.emplace_back(new NSRunningApplication(name.toStdString()));
    return applications;
}

bool NSRunningApplication::isEqual(const NSObject& other) const {
    const auto* application = dynamic_cast<const NSRunningApplication*>(&other);
    return application && application->m_busName == m_busName;
}

bool NSRunningApplication::terminate() {
    return !m_busName.empty() && sendTerminate(QString::fromStdString(m_busName));
}

#include "NSRunningApplication.moc"
