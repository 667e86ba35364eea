#pragma once

#include <map>
#include <optional>
#include <string>

#include <QString>

/// A text file of `key=value` lines, the section [General] of which is ours. Whatever else it holds
/// stays as it is. It is read anew each time, and replaced as a whole, so a reader or a crash finds
/// the old text or the new one.
class DefaultsFile {
public:
    explicit DefaultsFile(QString path) : m_path(std::move(path)) {}

    /// Empty where the key is missing or the file cannot be read.
    std::optional<std::string> value(const std::string& key) const;

    /// No value removes the key. What cannot be written is remembered, and tried again with the
    /// next change.
    void set(const std::string& key, const std::optional<std::string>& value);

private:
    const QString m_path;
    std::map<std::string, std::optional<std::string>> m_unwritten;
};
