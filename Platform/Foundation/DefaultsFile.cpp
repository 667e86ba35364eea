#include "Foundation/DefaultsFile+Private.h"

#include "Foundation/TextFile+Private.h"
#include "Foundation/TextSection+Private.h"

namespace {

// A QSettings would do for sound files. But it waits half a minute at a damaged lock, and drops or
// rewrites what it cannot read.

constexpr const char* section = "[General]";

} // namespace

std::optional<std::string> DefaultsFile::value(const std::string& key) const {
    const auto unwritten = m_unwritten.find(key);
    if (unwritten != m_unwritten.end()) return unwritten->second;
    return TextSection(TextFile(m_path).read().value_or(""), section).value(key);
}

void DefaultsFile::set(const std::string& key, const std::optional<std::string>& value) {
    m_unwritten[key] = value;
    TextFile file(m_path);
    const auto text = file.read();
    if (!text) return;
    const TextSection before(*text, section);
    TextSection after = before;
    for (const auto& [changedKey, changedValue] : m_unwritten)
        after.set(changedKey, changedValue);
    if (after == before || file.replace(after.text())) m_unwritten.clear();
}
