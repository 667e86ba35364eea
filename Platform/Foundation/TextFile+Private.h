#pragma once

#include <QString>

#include <optional>
#include <string>

/// A text that others may write as well. What is refused leaves it as it was.
class TextFile {
public:
    explicit TextFile(QString path) : m_path(std::move(path)) {}

    /// An empty text where there is no file; nothing where there is one that must be left alone.
    std::optional<std::string> read();

    /// As a whole: a reader, a crash at any moment or a disk that fills up finds the old text or
    /// the new one. Folders that are missing are made. A link stays one; what it leads to is
    /// replaced. Anything but a file is left alone.
    bool replace(const std::string& text);

    const QString& path() const { return m_path; }
    const QString& refusal() const { return m_refusal; } ///< Why the last call did nothing.

private:
    const QString m_path;
    QString m_refusal;
};
