#include "ServiceManagement/ServiceManagement.h"

#include "Foundation/NSBundle+Private.h"
#include "ServiceManagement/DesktopEntry+Private.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace {

/// Where the entry may stand: the user's own place, then the system's, the first one that holds a
/// file counts.
QStringList placesOf(const std::string& identifier) {
    auto places = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    for (QString& folder : places)
        folder += QString("/autostart/%1.desktop").arg(identifier.c_str());
    return places;
}

bool isFile(const QString& path) { return QFileInfo(path).isFile(); }

QString countingOf(const QStringList& places) {
    const auto counting = std::ranges::find_if(places, isFile);
    return counting == places.end() ? places.front() : *counting;
}

/// Says which file could not be read or written, and why.
std::shared_ptr<NSError> errorOf(const QString& path, const QString& reason) {
    return std::make_shared<NSError>(SMAppServiceErrorDomain, kSMErrorInternalFailure,
                                     (path + ": " + reason).toStdString());
}

/// Gives the user an entry that is the one that counts, changed. Where that changes nothing, the
/// one that counts will do. Null for no error.
std::shared_ptr<NSError> change(const QStringList& places,
                                const std::function<void(DesktopEntry&)>& edit) {
    TextFile found(countingOf(places));
    const auto text = found.read();
    if (!text) return errorOf(found.path(), found.refusal());
    const DesktopEntry before(*text);
    DesktopEntry after = before;
    edit(after);
    TextFile own(places.front());
    if (after == before || own.replace(after.text())) return nullptr;
    return errorOf(own.path(), own.refusal());
}

std::shared_ptr<NSError> remove(const QString& path) {
    const QFileInfo info(path);
    QFile file(path);
    if ((!info.exists() && !info.isSymLink()) || file.remove()) return nullptr;
    return errorOf(path, file.errorString());
}

} // namespace

SMAppService& SMAppService::mainAppService() {
    static SMAppService service({.identifier = infoOf("CFBundleIdentifier"),
                                 .name = infoOf("CFBundleName"),
                                 .program = QCoreApplication::applicationFilePath().toStdString()});
    return service;
}

SMAppServiceStatus SMAppService::status() const {
    const auto counting = countingOf(placesOf(m_application.identifier));
    if (!isFile(counting)) return SMAppServiceStatusNotRegistered;
    // What cannot be read here cannot be by the desktop either.
    const DesktopEntry entry(TextFile(counting).read().value_or(""));
    if (entry.isDisabled()) return SMAppServiceStatusRequiresApproval;
    return entry.isStartable() ? SMAppServiceStatusEnabled : SMAppServiceStatusNotFound;
}

bool SMAppService::registerAndReturnError(std::shared_ptr<NSError>& error) {
    error = change(placesOf(m_application.identifier), [this](DesktopEntry& entry) {
        const auto& [identifier, name, program] = m_application;
        entry.enable(program.c_str(), name.c_str(), identifier.c_str());
    });
    return !error;
}

bool SMAppService::unregisterAndReturnError(std::shared_ptr<NSError>& error) {
    const auto places = placesOf(m_application.identifier);
    const bool isOfSystem = std::any_of(places.begin() + 1, places.end(), isFile);
    error = isOfSystem ? change(places, &DesktopEntry::hide) : remove(places.front());
    return !error;
}
