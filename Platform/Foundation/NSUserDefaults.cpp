#include "Foundation/NSUserDefaults.h"

#include "Foundation/DefaultsFile+Private.h"
#include "Foundation/NSBundle+Private.h"

#include <QStandardPaths>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace {

// A list is written with commas, `0, 0.62`; one of fewer than two elements ends in a comma. Numbers
// are the shortest that read back as the same, in no one's language.

QString path() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/" +
           QString::fromStdString(infoOf("CFBundleIdentifier")) + ".ini";
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

NSUserDefaults::NSUserDefaults() : m_file(std::make_unique<DefaultsFile>(path())) {}

NSUserDefaults::~NSUserDefaults() = default;

std::optional<NSArray> NSUserDefaults::arrayForKey(const std::string& key) const {
    const auto value = m_file->value(key);
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
    const auto value = m_file->value(key);
    return value == "true" || value == "1";
}

void NSUserDefaults::setObject(const std::vector<double>& numbers, const std::string& key) {
    m_file->set(key, written(numbers));
}

void NSUserDefaults::setBool(bool value, const std::string& key) {
    m_file->set(key, value ? "true" : "false");
}

void NSUserDefaults::removeObjectForKey(const std::string& key) { m_file->set(key, std::nullopt); }
