#include "Harness/Portal.h"

#include <stdexcept>

namespace Harness {

namespace {

const QString appearance = QStringLiteral("org.freedesktop.appearance");

} // namespace

Portal::Portal(const std::string& busAddress, bool highContrast)
    : m_bus(QDBusConnection::connectToBus(QString::fromStdString(busAddress), "portal")),
      m_highContrast(highContrast) {
    qRegisterMetaType<QDBusVariant>("QDBusVariant");
    if (!m_bus.registerObject("/org/freedesktop/portal/desktop", this,
                              QDBusConnection::ExportAllContents) ||
        !m_bus.registerService("org.freedesktop.portal.Desktop"))
        throw std::runtime_error("no portal on the session bus");
}

Portal::~Portal() { QDBusConnection::disconnectFromBus("portal"); }

void Portal::setHighContrast(bool highContrast) {
    m_highContrast = highContrast;
    emit SettingChanged(appearance, "contrast", contrast());
}

void Portal::setDark(bool dark) {
    m_dark = dark;
    emit SettingChanged(appearance, "color-scheme", scheme());
}

QDBusVariant Portal::ReadOne(const QString& space, const QString& key) {
    if (space == appearance && key == "contrast") return contrast();
    if (space == appearance && key == "color-scheme") return scheme();
    sendErrorReply("org.freedesktop.portal.Error.NotFound", "no such setting");
    return {};
}

QDBusVariant Portal::Read(const QString& space, const QString& key) {
    return QDBusVariant(QVariant::fromValue(ReadOne(space, key)));
}

} // namespace Harness
