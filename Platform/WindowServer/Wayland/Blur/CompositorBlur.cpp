#include "WindowServer/Wayland/Blur/CompositorBlur.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QFileSystemWatcher>
#include <QSettings>
#include <QStandardPaths>

#include <utility>

namespace WindowServer::Wayland {

namespace {

// KWin's, of 1 to 15.
constexpr int usualStrength = 15;
constexpr int leastStrength = 8;

QString folderOfSettings() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

QString settingsFile() { return folderOfSettings() + "/kwinrc"; }

} // namespace

CompositorBlur::CompositorBlur(const Connection& connection) : m_connection(connection) {}

void CompositorBlur::attach() {
    m_isStrong = readStrength();
    m_files = new QFileSystemWatcher(this);
    // The file is replaced at each change, and may not be there yet.
    m_files->addPath(folderOfSettings());
    if (QFile::exists(settingsFile())) m_files->addPath(settingsFile());
    connect(m_files, &QFileSystemWatcher::directoryChanged, this, &CompositorBlur::settingsChanged);
    connect(m_files, &QFileSystemWatcher::fileChanged, this, &CompositorBlur::settingsChanged);
}

void CompositorBlur::settingsChanged() {
    if (!m_files->files().contains(settingsFile()) && QFile::exists(settingsFile()))
        m_files->addPath(settingsFile());
    const bool isStrong = readStrength();
    if (std::exchange(m_isStrong, isStrong) != isStrong && onChanged) onChanged();
}

bool CompositorBlur::readStrength() const {
    const auto* const bus = QDBusConnection::sessionBus().interface();
    if (!bus || !bus->isServiceRegistered("org.kde.KWin")) return false;
    const QSettings settings(settingsFile(), QSettings::IniFormat);
    return settings.value("Plugins/blurEnabled", true).toBool() &&
           settings.value("Effect-blur/BlurStrength", usualStrength).toInt() >= leastStrength;
}

} // namespace WindowServer::Wayland
