#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
