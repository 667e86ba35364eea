#include "Foundation/TextFile+Private.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

constexpr qint64 maximumSize = 1 << 20; // A hundred times what any of ours takes.
const QString notAFile = "Not a file";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blank = " \t\r";
    const auto first = text.find_first_not_of(blank);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blank) - first + 1);
}

bool isHeader(std::string_view line) { return trimmed(line).starts_with('['); }

bool isOf(std::string_view line, std::string_view key) {
    const auto equals = line.find('=');
    return equals != line.npos && trimmed(line.substr(0, equals)) == key;
}

} // namespace

std::optional<std::string> TextFile::read() {
    const QFileInfo info(m_path);
    if (!info.exists()) return "";
    QFile file(m_path);
    if (!info.isFile()) // Opening a pipe would wait for its other end.
        m_refusal = notAFile;
    else if (info.size() > maximumSize)
        m_refusal = "File too large";
    else if (file.open(QIODevice::ReadOnly))
        return file.readAll().toStdString();
    else
        m_refusal = file.errorString();
    return std::nullopt;
}

bool TextFile::replace(const std::string& text) {
    const QFileInfo info(m_path);
    QSaveFile file(m_path);
    // Without the flush, a disk that fills up in the middle of the text would pass for success.
    if (info.exists() && !info.isFile())
        m_refusal = notAFile;
    else if (QDir().mkpath(info.path()) && file.open(QIODevice::WriteOnly) &&
             file.write(QByteArray::fromStdString(text)) >= 0 && file.flush() && file.commit())
        return true;
    else
        m_refusal = qt_error_string();
    return false;
}

TextSection::TextSection(std::string_view text, std::string header) : m_header(std::move(header)) {
    while (!text.empty()) {
        const auto length = std::min(text.find('\n'), text.size());
        m_lines.emplace_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
}

std::string TextSection::text() const {
    std::string text;
    for (const std::string& line : m_lines)
        text += line + '\n';
    return text;
}

std::optional<std::string> TextSection::value(std::string_view key) const {
    const auto found = linesOf(key);
    if (found.empty()) return std::nullopt;
    const std::string_view line = m_lines[found.back()];
    return std::string(trimmed(line.substr(line.find('=') + 1)));
}

void TextSection::set(const std::string& key, const std::optional<std::string>& value) {
    auto found = linesOf(key);
    if (value && found.empty()) {
        if (std::ranges::find(m_lines, m_header, trimmed) == m_lines.end())
            m_lines.insert(m_lines.begin(), m_header);
        found.push_back(end());
        m_lines.emplace(m_lines.begin() + static_cast<std::ptrdiff_t>(found.back()));
    }
    if (value) {
        m_lines[found.back()] = key + "=" + *value;
        found.pop_back();
    }
    for (; !found.empty(); found.pop_back())
        m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(found.back()));
}

/// The lines that hold the key, from the first to the last.
std::vector<size_t> TextSection::linesOf(std::string_view key) const {
    std::vector<size_t> found;
    bool own = true;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        if (isHeader(m_lines[i]))
            own = trimmed(m_lines[i]) == m_header;
        else if (own && isOf(m_lines[i], key))
            found.push_back(i);
    }
    return found;
}

/// Behind the last line of our section, the blank ones at its end not counted.
size_t TextSection::end() const {
    const auto header = std::ranges::find(m_lines, m_header, trimmed);
    const auto from = header == m_lines.end() ? m_lines.begin() : header + 1;
    auto end = std::find_if(from, m_lines.end(), isHeader);
    while (end != from && trimmed(end[-1]).empty())
        --end;
    return static_cast<size_t>(end - m_lines.begin());
}
