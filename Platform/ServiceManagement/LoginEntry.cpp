#include "ServiceManagement/LoginEntry+Private.h"

#include "Foundation/ReplaceFile+Private.h"
#include "ServiceManagement/DesktopEntry+Private.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace {

namespace files = std::filesystem;

/// Says which file could not be read or written, and why.
struct Refusal : std::runtime_error {
    Refusal(const files::path& path, const std::string& reason)
        : std::runtime_error(path.string() + ": " + reason) {}
    Refusal(const files::path& path, int code)
        : Refusal(path, std::generic_category().message(code)) {}
};

/// Where the entry may stand: the user's own place, then the system's, the first one that holds a
/// file counts.
std::vector<files::path> placesOf(const std::string& identifier) {
    std::vector<files::path> places;
    for (const auto& folder :
         QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation))
        places.push_back(files::path(folder.toStdString()) / "autostart" /
                         (identifier + ".desktop"));
    return places;
}

bool isFile(const files::path& path) {
    std::error_code ignored;
    return files::is_regular_file(path, ignored);
}

std::string readFile(const files::path& path) {
    constexpr qint64 maximumSize = 1 << 20; // An entry in every language takes a hundredth.
    QFile file(QString::fromStdString(path.string()));
    if (!file.open(QIODevice::ReadOnly)) throw Refusal(path, file.errorString().toStdString());
    if (file.size() > maximumSize) throw Refusal(path, EFBIG);
    return file.readAll().toStdString();
}

void removeFile(const files::path& path) {
    const bool isGone = ::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
    if (!isGone) throw Refusal(path, errno);
}

/// Gives the user an entry that is the one that counts, changed. Where that changes nothing, the
/// one that counts will do.
template <typename Edit> void change(const std::vector<files::path>& places, const Edit& edit) {
    const auto counting = std::ranges::find_if(places, isFile);
    const DesktopEntry before(counting == places.end() ? "" : readFile(*counting));
    DesktopEntry after = before;
    std::invoke(edit, after);
    if (after == before) return;
    if (const auto error = replaceFile(places.front(), after.text()))
        throw Refusal(places.front(), error.message());
}

template <typename Work> bool attempt(std::shared_ptr<NSError>& error, const Work& work) {
    try {
        work();
        return true;
    } catch (const Refusal& refusal) {
        error = std::make_shared<NSError>(SMAppServiceErrorDomain, kSMErrorInternalFailure,
                                          refusal.what());
        return false;
    }
}

} // namespace

LoginEntry::LoginEntry(Application application) : m_application(std::move(application)) {}

SMAppServiceStatus LoginEntry::status() const {
    const auto places = placesOf(m_application.identifier);
    const auto counting = std::ranges::find_if(places, isFile);
    if (counting == places.end()) return SMAppServiceStatusNotRegistered;
    try {
        const DesktopEntry entry(readFile(*counting));
        if (entry.isDisabled()) return SMAppServiceStatusRequiresApproval;
        if (entry.isStartable()) return SMAppServiceStatusEnabled;
    } catch (const Refusal&) { // The desktop cannot read it either.
    }
    return SMAppServiceStatusNotFound;
}

bool LoginEntry::registerAndReturnError(std::shared_ptr<NSError>& error) {
    return attempt(error, [this] {
        change(placesOf(m_application.identifier), [this](DesktopEntry& entry) {
            entry.enable(m_application.program, m_application.name, m_application.identifier);
        });
    });
}

bool LoginEntry::unregisterAndReturnError(std::shared_ptr<NSError>& error) {
    return attempt(error, [this] {
        const auto places = placesOf(m_application.identifier);
        const auto& own = places.front();
        const bool isOfSystem = std::ranges::any_of(
            places, [&](const auto& place) { return place != own && isFile(place); });
        if (isOfSystem)
            change(places, &DesktopEntry::hide);
        else
            removeFile(own);
    });
}
