#include "Foundation/DefaultsFile+Private.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <string_view>

namespace {

// A QSettings would do for sound files. But it waits half a minute at a damaged lock, and drops or
// rewrites what it cannot read.

using Lines = std::vector<std::string>;

constexpr qint64 maximumSize = 1 << 20; // A thousand times what any number of screens takes.
constexpr std::string_view ownSection = "[General]";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blank = " \t\r";
    const auto first = text.find_first_not_of(blank);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blank) - first + 1);
}

bool isSection(std::string_view line) { return trimmed(line).starts_with('['); }

bool isOf(std::string_view line, std::string_view key) {
    const auto equals = line.find('=');
    return equals != line.npos && trimmed(line.substr(0, equals)) == key;
}

/// Behind the last line of our section, and with it any values that stand before all sections.
size_t endOfOwn(const Lines& lines) {
    const auto header = std::ranges::find(lines, ownSection, trimmed);
    const auto from = header == lines.end() ? lines.begin() : header + 1;
    return static_cast<size_t>(std::find_if(from, lines.end(), isSection) - lines.begin());
}

/// The lines that hold the key, from the first to the last.
std::vector<size_t> linesOf(const Lines& lines, std::string_view key) {
    std::vector<size_t> found;
    bool own = true;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (isSection(lines[i]))
            own = trimmed(lines[i]) == ownSection;
        else if (own && isOf(lines[i], key))
            found.push_back(i);
    }
    return found;
}

void change(Lines& lines, const std::string& key, const std::optional<std::string>& value) {
    auto found = linesOf(lines, key);
    if (value && found.empty()) {
        if (std::ranges::find(lines, ownSection, trimmed) == lines.end())
            lines.insert(lines.begin(), std::string(ownSection));
        found.push_back(endOfOwn(lines));
        lines.emplace(lines.begin() + static_cast<std::ptrdiff_t>(found.back()));
    }
    if (value) {
        lines[found.back()] = key + "=" + *value;
        found.pop_back();
    }
    for (; !found.empty(); found.pop_back())
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(found.back()));
}

} // namespace

std::optional<std::string> DefaultsFile::value(const std::string& key) const {
    const auto unwritten = m_unwritten.find(key);
    if (unwritten != m_unwritten.end()) return unwritten->second;
    const auto lines = read().value_or(Lines());
    const auto found = linesOf(lines, key);
    if (found.empty()) return std::nullopt;
    const std::string& line = lines[found.back()];
    return std::string(trimmed(std::string_view(line).substr(line.find('=') + 1)));
}

void DefaultsFile::set(const std::string& key, const std::optional<std::string>& value) {
    m_unwritten[key] = value;
    const auto before = read();
    if (!before) return;
    auto after = *before;
    for (const auto& [changedKey, changedValue] : m_unwritten)
        change(after, changedKey, changedValue);
    if (after == *before || write(after)) m_unwritten.clear();
}

std::optional<DefaultsFile::Lines> DefaultsFile::read() const {
    const QFileInfo info(m_path);
    if (!info.exists()) return Lines();
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || info.size() > maximumSize) return std::nullopt;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    Lines lines;
    while (!file.atEnd()) {
        lines.push_back(file.readLine().toStdString());
        if (lines.back().ends_with('\n')) lines.back().pop_back();
    }
    return lines;
}

bool DefaultsFile::write(const Lines& lines) const {
    if (!QDir().mkpath(QFileInfo(m_path).path())) return false;
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) return false;
    for (const std::string& line : lines)
        file.write((line + '\n').c_str(), static_cast<qint64>(line.size()) + 1);
    return file.commit(); // Waits for the disk.
}
