#include "ServiceManagement/DesktopEntry+Private.h"

#include <QStandardPaths>

namespace {

/// Each with the word that turns the entry off.
constexpr std::pair<const char*, bool> switches[] = {
    {"Hidden", true},
    {"X-GNOME-Autostart-enabled", false},
    {"X-MATE-Autostart-enabled", false},
};

using Value = std::optional<QByteArray>;

bool says(const Value& value, bool wanted) {
    return value == (wanted ? "true" : "false") || value == (wanted ? "1" : "0");
}

/// As any value of text is written. Blanks only need it where a value begins.
QByteArray escaped(QByteArray text) {
    return text.replace('\\', "\\\\")
        .replace('\n', "\\n")
        .replace('\r', "\\r")
        .replace('\t', "\\t");
}

/// A backslash before any other character stands for itself.
QByteArray unescaped(const QByteArray& text) {
    constexpr std::string_view escapedAs = R"(snrt\)";
    constexpr std::string_view escapable = " \n\r\t\\";
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool escapes = text[i] == '\\' && i + 1 < text.size();
        const auto found = escapes ? escapedAs.find(text[i + 1]) : escapedAs.npos;
        result += found == escapedAs.npos ? text[i] : escapable[found];
        if (found != escapedAs.npos) ++i;
    }
    return result;
}

/// The first word of a command line, without its quotes. Empty where a quote has no end.
Value firstWord(const QByteArray& line) {
    constexpr char none = 0;
    QByteArray word;
    char quote = none;
    for (qsizetype i = 0; i < line.size() && (quote || line[i] != ' '); ++i) {
        if (line[i] == quote)
            quote = none;
        else if (!quote && (line[i] == '"' || line[i] == '\''))
            quote = line[i];
        else if (line[i] == '\\' && quote != '\'' && i + 1 < line.size())
            word += line[++i];
        else
            word += line[i];
    }
    return quote ? std::nullopt : Value(word);
}

bool isExecutable(const Value& program) {
    return program && !QStandardPaths::findExecutable(QString::fromUtf8(*program)).isEmpty();
}

} // namespace

bool DesktopEntry::isDisabled() const {
    for (const auto& [key, off] : switches)
        if (says(m_section.value(key), off)) return true;
    return !isForThisDesktop();
}

bool DesktopEntry::isForThisDesktop() const {
    const auto only = m_section.value("OnlyShowIn");
    const auto never = m_section.value("NotShowIn").value_or("").split(';');
    for (const QByteArray& name : qgetenv("XDG_CURRENT_DESKTOP").split(':')) {
        if (only && only->split(';').contains(name)) return true;
        if (never.contains(name)) return false;
    }
    return !only;
}

bool DesktopEntry::isStartable() const {
    const auto needed = m_section.value("TryExec");
    return m_section.value("Type") == "Application" &&
           isExecutable(programOf(m_section.value("Exec").value_or(""))) &&
           (!needed || isExecutable(unescaped(*needed)));
}

void DesktopEntry::enable(const QByteArray& program, const QByteArray& name,
                          const QByteArray& icon) {
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

QByteArray commandLineOf(const QByteArray& program) {
    QByteArray word = program;
    for (const char* const character : {"\\", "\"", "`", "$"})
        word.replace(character, QByteArray("\\") + character);
    word.replace("%", "%%");
    const bool isPlain =
        program.toStdString().find_first_of(" \t\n\v\f\r\"'\\><~|&;$*?#()`=") == std::string::npos;
    return escaped(isPlain ? word : '"' + word + '"');
}

std::optional<QByteArray> programOf(const QByteArray& commandLine) {
    auto word = firstWord(unescaped(commandLine).trimmed());
    if (word) word->replace("%%", "%");
    return word;
}
