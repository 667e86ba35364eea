#pragma once

#include <QByteArrayList>
#include <QString>

#include <optional>

/// A text that others may write as well. What is refused leaves it as it was.
class TextFile {
public:
    explicit TextFile(QString path) : m_path(std::move(path)) {}

    /// An empty text where there is no file; nothing where there is one that must be left alone.
    std::optional<QByteArray> read();

    /// As a whole: a reader, a crash at any moment or a disk that fills up finds the old text or
    /// the new one. Folders that are missing are made. A link stays one; what it leads to is
    /// replaced. Anything but a file is left alone.
    bool replace(const QByteArray& text);

    const QString& path() const { return m_path; }
    const QString& refusal() const { return m_refusal; } ///< Why the last call did nothing.

private:
    const QString m_path;
    QString m_refusal;
};

/// A text of `key=value` lines in sections, one of which is ours. Whatever else it holds stays as
/// it is, to the byte.
class TextSection {
public:
    /// The header is the whole line that begins our section, "[General]". What stands before all
    /// sections counts as ours.
    TextSection(const QByteArray& text, QByteArray header)
        : m_header(std::move(header)), m_lines(text.split('\n')) {}

    QByteArray text() const { return m_lines.join('\n'); }

    /// Without the blanks around it. The last one, where the key stands several times.
    std::optional<QByteArray> value(const QByteArray& key) const;

    /// No value removes the key.
    void set(const QByteArray& key, const std::optional<QByteArray>& value);

    bool operator==(const TextSection&) const = default;

private:
    QList<qsizetype> linesOf(const QByteArray& key) const;
    qsizetype end() const;

    QByteArray m_header;
    QByteArrayList m_lines;
};
