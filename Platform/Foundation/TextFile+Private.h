#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// A text of `key=value` lines in sections, one of which is ours. Whatever else it holds stays as
/// it is, to the byte.
class TextSection {
public:
    /// The header is the whole line that begins our section, "[General]". What stands before all
    /// sections counts as ours.
    TextSection(std::string_view text, std::string header);

    std::string text() const;

    /// Without the blanks around it. The last one, where the key stands several times.
    std::optional<std::string> value(std::string_view key) const;

    /// No value removes the key.
    void set(const std::string& key, const std::optional<std::string>& value);

    bool operator==(const TextSection&) const = default;

private:
    std::vector<size_t> linesOf(std::string_view key) const;
    size_t end() const;

    std::string m_header;
    std::vector<std::string> m_lines;
};
