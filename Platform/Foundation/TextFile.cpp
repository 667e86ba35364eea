#include "Foundation/TextFile+Private.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

constexpr qint64 maximumSize = 1 << 20; // A hundred times what any of ours takes.
const QString notAFile = "Not a file";

QByteArray trimmed(const QByteArray& line) { return line.trimmed(); }
bool isHeader(const QByteArray& line) { return line.trimmed().startsWith('['); }

bool isOf(const QByteArray& line, const QByteArray& key) {
    const auto equals = line.indexOf('=');
    return equals >= 0 && line.first(equals).trimmed() == key;
}

} // namespace

std::optional<QByteArray> TextFile::read() {
    const QFileInfo info(m_path);
    if (!info.exists()) return "";
    QFile file(m_path);
    if (!info.isFile()) // Opening a pipe would wait for its other end.
        m_refusal = notAFile;
    else if (info.size() > maximumSize)
        m_refusal = "File too large";
    else if (file.open(QIODevice::ReadOnly))
        return file.readAll();
    else
        m_refusal = file.errorString();
    return std::nullopt;
}

bool TextFile::replace(const QByteArray& text) {
    const QFileInfo info(m_path);
    QSaveFile file(m_path);
    // Without the flush, a disk that fills up in the middle of the text would pass for success.
    if (info.exists() && !info.isFile())
        m_refusal = notAFile;
    else if (QDir().mkpath(info.path()) && file.open(QIODevice::WriteOnly) &&
             file.write(text) >= 0 && file.flush() && file.commit())
        return true;
    else
        m_refusal = qt_error_string();
    return false;
}

std::optional<QByteArray> TextSection::value(const QByteArray& key) const {
    const auto found = linesOf(key);
    if (found.empty()) return std::nullopt;
    const QByteArray& line = m_lines[found.last()];
    return line.sliced(line.indexOf('=') + 1).trimmed();
}

void TextSection::set(const QByteArray& key, const std::optional<QByteArray>& value) {
    auto found = linesOf(key);
    if (value && found.empty()) {
        if (std::ranges::find(m_lines, m_header, trimmed) == m_lines.end())
            m_lines.prepend(m_header);
        found = {end()};
        m_lines.insert(found.first(), "");
    }
    if (value) m_lines[found.takeLast()] = key + '=' + *value;
    while (!found.empty())
        m_lines.removeAt(found.takeLast());
}

/// The lines that hold the key, from the first to the last.
QList<qsizetype> TextSection::linesOf(const QByteArray& key) const {
    QList<qsizetype> found;
    bool own = true;
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        if (isHeader(m_lines[i]))
            own = m_lines[i].trimmed() == m_header;
        else if (own && isOf(m_lines[i], key))
            found.append(i);
    }
    return found;
}

/// Behind the last line of our section, the blank ones at its end not counted.
qsizetype TextSection::end() const {
    const auto header = std::ranges::find(m_lines, m_header, trimmed);
    const auto from = header == m_lines.end() ? m_lines.begin() : header + 1;
    auto end = std::find_if(from, m_lines.end(), isHeader);
    while (end != from && end[-1].trimmed().isEmpty())
        --end;
    return end - m_lines.begin();
}
