#include "ServiceManagement/LoginEntry+Private.h"

#include <QStandardPaths>
#include <QString>
#include <QStringList>

namespace {

/// Each with the word that turns the entry off.
constexpr std::pair<const char*, bool> switches[] = {
    {"Hidden", true},
    {"X-GNOME-Autostart-enabled", false},
    {"X-MATE-Autostart-enabled", false},
};

bool says(const std::optional<std::string>& value, bool wanted) {
    return value == (wanted ? "true" : "false") || value == (wanted ? "1" : "0");
}

QStringList listIn(const std::optional<std::string>& value, QChar separator) {
    return QString::fromStdString(value.value_or("")).split(separator, Qt::SkipEmptyParts);
}

constexpr std::string_view escapedAs = R"(snrt\)";
constexpr std::string_view escapable = " \n\r\t\\";

/// As any value of text is written. Blanks only need it where a value begins.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto found = escapable.find(character);
        if (found == escapable.npos || character == ' ')
            result += character;
        else
            (result += '\\') += escapedAs[found];
    }
    return result;
}

/// A backslash before any other character stands for itself.
std::string unescaped(std::string_view text) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool escapes = text[i] == '\\' && i + 1 < text.size();
        const auto found = escapes ? escapedAs.find(text[i + 1]) : escapedAs.npos;
        result += found == escapedAs.npos ? text[i] : escapable[found];
        if (found != escapedAs.npos) ++i;
    }
    return result;
}

/// The first word of a command line, without its quotes. Empty where a quote has no end.
std::optional<std::string> firstWord(std::string_view line) {
    constexpr char none = 0;
    std::string word;
    char quote = none;
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    for (size_t i = 0; i < line.size() && (quote || line[i] != ' '); ++i) {
        if (line[i] == quote)
            quote = none;
        else if (!quote && (line[i] == '"' || line[i] == '\''))
            quote = line[i];
        else if (line[i] == '\\' && quote != '\'' && i + 1 < line.size())
            word += line[++i];
        else
            word += line[i];
    }
    return quote ? std::nullopt : std::optional(word);
}

bool isExecutable(const std::optional<std::string>& program) {
    return program && !QStandardPaths::findExecutable(QString::fromStdString(*program)).isEmpty();
}

} // namespace

bool DesktopEntry::isDisabled() const {
    for (const auto& [key, off] : switches)
        if (says(m_section.value(key), off)) return true;
    return !isForThisDesktop();
}

bool DesktopEntry::isForThisDesktop() const {
    const auto only = listIn(m_section.value("OnlyShowIn"), ';');
    const auto never = listIn(m_section.value("NotShowIn"), ';');
    for (const auto& name : qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':')) {
        if (only.contains(name)) return true;
        if (never.contains(name)) return false;
    }
    return !m_section.value("OnlyShowIn");
}

bool DesktopEntry::isStartable() const {
    const auto needed = m_section.value("TryExec");
    return m_section.value("Type") == "Application" &&
           isExecutable(programOf(m_section.value("Exec").value_or(""))) &&
           (!needed || isExecutable(unescaped(*needed)));
}

void DesktopEntry::enable(const std::string& program, const std::string& name,
                          const std::string& icon) {
    m_section.set("Type", "Application");
    if (!m_section.value("Name")) m_section.set("Name", escaped(name));
    if (!m_section.value("Icon")) m_section.set("Icon", escaped(icon));
    m_section.set("Exec", commandLineOf(program));
    m_section.set("TryExec", escaped(program)); // Uninstalled, it is passed over without a word.
    m_section.set("DBusActivatable", std::nullopt);
    for (const auto& [key, off] : switches)
        if (says(m_section.value(key), off)) m_section.set(key, std::nullopt);
    if (isForThisDesktop()) return;
    m_section.set("OnlyShowIn", std::nullopt);
    m_section.set("NotShowIn", std::nullopt);
}

std::string commandLineOf(const std::string& program) {
    auto bytes = QByteArray::fromStdString(program); // A path need not be in UTF-8.
    std::string word;
    for (const char character : bytes.replace("%", "%%")) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) word += '\\';
        word += character;
    }
    const bool isPlain = program.find_first_of(" \t\n\r\"'\\><~|&;$*?#()`=") == program.npos;
    return escaped(isPlain ? word : '"' + word + '"');
}

std::optional<std::string> programOf(std::string_view commandLine) {
    const auto word = firstWord(unescaped(commandLine));
    if (!word) return std::nullopt;
    return QByteArray::fromStdString(*word).replace("%%", "%").toStdString();
}
