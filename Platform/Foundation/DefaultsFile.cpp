#include "Foundation/DefaultsFile+Private.h"

#include "Foundation/ReplaceFile+Private.h"
#include "Foundation/TextSection+Private.h"

#include <QFile>
#include <QFileInfo>

namespace {

// A QSettings would do for sound files. But it waits half a minute at a damaged lock, and drops or
// rewrites what it cannot read.

constexpr qint64 maximumSize = 1 << 20; // A thousand times what any number of screens takes.
constexpr const char* section = "[General]";

} // namespace

std::optional<std::string> DefaultsFile::value(const std::string& key) const {
    const auto unwritten = m_unwritten.find(key);
    if (unwritten != m_unwritten.end()) return unwritten->second;
    return TextSection(read().value_or(""), section).value(key);
}

void DefaultsFile::set(const std::string& key, const std::optional<std::string>& value) {
    m_unwritten[key] = value;
    const auto text = read();
    if (!text) return;
    const TextSection before(*text, section);
    TextSection after = before;
    for (const auto& [changedKey, changedValue] : m_unwritten)
        after.set(changedKey, changedValue);
    if (after == before || !replaceFile(m_path.toStdString(), after.text())) m_unwritten.clear();
}

std::optional<std::string> DefaultsFile::read() const {
    const QFileInfo info(m_path);
    if (!info.exists()) return "";
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || info.size() > maximumSize) return std::nullopt;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll().toStdString();
}
