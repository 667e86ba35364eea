#include "AppKit/NSRunningApplication.h"

#include "AppKit/NSApplication.h"
#include "Foundation/NSBundle.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

// Each instance owns a name under its bundle identifier that ends in its number on the bus: the
// unique name ":1.42" gives "com.vardek.NimbrelLite.Instance1_42". The bus counts up and gives no
// number twice, so the numbers tell which instance is older.

const QString objectPath = "/com/vardek/NimbrelLite/Instance";
const QString interfaceName = "com.vardek.NimbrelLite.Instance";
constexpr int busPatience = 500; // Milliseconds; a sound bus answers within one.

QString instancePrefix(const std::string& bundleIdentifier) {
    return QString::fromStdString(bundleIdentifier) + ".Instance";
}

QString instanceName(const std::string& bundleIdentifier, const QString& uniqueName) {
    return instancePrefix(bundleIdentifier) + uniqueName.mid(1).replace('.', '_');
}

/// Grows with the time at which the owner of a unique or an instance name came to the bus.
std::pair<quint64, quint64> birth(const QString& name) {
    static const QRegularExpression numbers("([0-9]+)[._]([0-9]+)$");
    const auto match = numbers.match(name);
    return {match.captured(1).toULongLong(), match.captured(2).toULongLong()};
}

QDBusMessage busCall(const char* method) {
    return QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", method);
}

bool sendTerminate(const QString& busName) {
    auto request = QDBusMessage::createMethodCall(busName, objectPath, interfaceName, "Terminate");
    request.setAutoStartService(false);
    return QDBusConnection::sessionBus().send(request);
}

/// This process as the others see it.
class Instance : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.vardek.NimbrelLite.Instance")

public slots:
    // Of two instances that start at once and ask each other, the older one goes.
    void Terminate() {
        const QString sender = message().service();
        if (birth(sender) < birth(connection().baseService())) {
            sendErrorReply(QDBusError::AccessDenied, "A newer instance stays.");
            sendTerminate(sender);
            return;
        }
        NSApp->terminate(nullptr);
    }
};

/// Makes this process known. Empty where there is no bus, or no identifier to be known by.
std::string joinBus() {
    const auto identifier = NSBundle::mainBundle().bundleIdentifier();
    auto bus = QDBusConnection::sessionBus();
    if (!identifier || !bus.isConnected()) return {};
    auto* const instance = new Instance; // For as long as the process runs.
    bus.registerObject(objectPath, instance, QDBusConnection::ExportAllSlots);
    // Not waited for: the bus works through our messages in order.
    const QString name = instanceName(*identifier, bus.baseService());
    constexpr uint doNotQueue = 4;
    bus.send(busCall("RequestName") << name << doNotQueue);
    return name.toStdString();
}

} // namespace

std::shared_ptr<NSRunningApplication> NSRunningApplication::currentApplication() {
    static const std::shared_ptr<NSRunningApplication> current(new NSRunningApplication(joinBus()));
    return current;
}

std::vector<std::shared_ptr<NSRunningApplication>>
NSRunningApplication::runningApplicationsWithBundleIdentifier(const std::string& bundleIdentifier) {
    const auto current = currentApplication();
    auto bus = QDBusConnection::sessionBus();
    const bool isOwn = NSBundle::mainBundle().bundleIdentifier() == bundleIdentifier;
    QStringList names;
    if (bus.isConnected()) {
        const auto reply = bus.call(busCall("ListNames"), QDBus::Block, busPatience);
        const QString prefix = instancePrefix(bundleIdentifier);
        for (const QString& name : reply.arguments().value(0).toStringList())
            if (name.startsWith(prefix)) names.append(name);
    }
    const QString own = QString::fromStdString(current->m_busName);
    if (isOwn && !names.contains(own)) names.append(own);
    std::sort(names.begin(), names.end(),
              [](const QString& a, const QString& b) { return birth(a) < birth(b); });

    std::vector<std::shared_ptr<NSRunningApplication>> applications;
    for (const QString& name : names)
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
