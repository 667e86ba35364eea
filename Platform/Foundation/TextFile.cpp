#include "Foundation/TextFile+Private.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {
constexpr qint64 maximumSize = 1 << 20; // A hundred times what any of ours takes.
const QString notAFile = "Not a file";
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
