#include "Foundation/NSUserDefaults.h"

#include "Foundation/NSBundle+Private.h"
#include "Foundation/TextFile+Private.h"

#include <QStandardPaths>

#include <algorithm>
#include <charconv>

namespace {

// A QSettings would do for sound files. But it waits half a minute at a damaged lock, and drops or
// rewrites what it cannot read.

constexpr const char* section = "[General]";

// A list is written with commas, `0, 0.62`; one of fewer than two elements ends in a comma. Numbers
// are the shortest that read back as the same, in no one's language.

std::string pathOfFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString() +
           "/" + infoOf("CFBundleIdentifier") + ".ini";
}

std::string written(double number) {
    char text[32];
    const auto end = std::to_chars(std::begin(text), std::end(text), number).ptr;
    return {text, end};
}

std::string written(const std::vector<double>& numbers) {
    std::string text;
    for (const double number : numbers)
        text += (text.empty() ? "" : ", ") + written(number);
    return numbers.size() < 2 ? text + "," : text;
}

std::optional<double> numberIn(std::string_view text) {
    double number = 0;
    const auto end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    return number;
}

NSArray::value_type element(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text.remove_suffix(text.size() - 1 - text.find_last_not_of(' '));
    if (const auto number = numberIn(text)) return *number;
    return std::string(text);
}

} // namespace

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    static NSUserDefaults defaults;
    return defaults;
}

NSUserDefaults::NSUserDefaults() : m_path(pathOfFile()) {}

std::optional<NSArray> NSUserDefaults::arrayForKey(const std::string& key) const {
    const auto value = valueFor(key);
    // A quoted text is one text, whatever stands in it.
    if (!value || value->find(',') == value->npos || value->front() == '"') return std::nullopt;
    if (value == ",") return NSArray();
    std::string_view rest = *value;
    NSArray elements;
    for (auto comma = rest.find(','); comma != rest.npos; comma = rest.find(',')) {
        elements.push_back(element(rest.substr(0, comma)));
        rest.remove_prefix(comma + 1);
    }
    if (rest.find_first_not_of(' ') != rest.npos) elements.push_back(element(rest));
    return elements;
}

bool NSUserDefaults::boolForKey(const std::string& key) const {
    const auto value = valueFor(key);
    return value == "true" || value == "1";
}

void NSUserDefaults::setObject(const std::vector<double>& numbers, const std::string& key) {
    set(key, written(numbers));
}

void NSUserDefaults::setBool(bool value, const std::string& key) {
    set(key, value ? "true" : "false");
}

void NSUserDefaults::removeObjectForKey(const std::string& key) { set(key, std::nullopt); }

std::optional<std::string> NSUserDefaults::valueFor(const std::string& key) const {
    const auto unwritten = m_unwritten.find(key);
    if (unwritten != m_unwritten.end()) return unwritten->second;
    TextFile file(QString::fromStdString(m_path));
    return TextSection(file.read().value_or(""), section).value(key);
}

void NSUserDefaults::set(const std::string& key, const std::optional<std::string>& value) {
    m_unwritten[key] = value;
    TextFile file(QString::fromStdString(m_path));
    const auto text = file.read();
    if (!text) return;
    const TextSection before(*text, section);
    TextSection after = before;
    for (const auto& [changedKey, changedValue] : m_unwritten)
        after.set(changedKey, changedValue);
    if (after == before || file.replace(after.text())) m_unwritten.clear();
}
