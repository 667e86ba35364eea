#include "Foundation/NSUserDefaults.h"

#include "Foundation/NSBundle+Private.h"
#include "Foundation/TextFile+Private.h"

#include <QLocale>
#include <QStandardPaths>

#include <map>

namespace {

// A QSettings would do for sound files. But it waits half a minute at a damaged lock, and drops or
// rewrites what it cannot read.

constexpr const char* section = "[General]";

// A list is written with commas, `0, 0.62`. Numbers are the shortest that read back as the same, in
// no one's language.

NSArray::value_type element(const QByteArray& text) {
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (isNumber) return number;
    return text.trimmed().toStdString();
}

/// What could not be written is tried again with the next change.
std::map<std::string, std::optional<QByteArray>> unwritten;

TextFile file() {
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/';
    return TextFile(folder + infoOf("CFBundleIdentifier").c_str() + ".ini");
}

std::optional<QByteArray> valueFor(const std::string& key) {
    const auto known = unwritten.find(key);
    if (known != unwritten.end()) return known->second;
    return TextSection(file().read().value_or(""), section).value(key.c_str());
}

/// No value removes the key.
void set(const std::string& key, const std::optional<QByteArray>& value) {
    unwritten[key] = value;
    const auto text = file().read();
    if (!text) return;
    const TextSection before(*text, section);
    TextSection after = before;
    for (const auto& [changedKey, changedValue] : unwritten)
        after.set(changedKey.c_str(), changedValue);
    if (after == before || file().replace(after.text())) unwritten.clear();
}

} // namespace

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    static NSUserDefaults defaults;
    return defaults;
}

std::optional<NSArray> NSUserDefaults::arrayForKey(const std::string& key) const {
    const auto value = valueFor(key);
    // A quoted text is one text, whatever stands in it.
    if (!value || !value->contains(',') || value->startsWith('"')) return std::nullopt;
    NSArray elements;
    for (const QByteArray& text : value->split(','))
        elements.push_back(element(text));
    return elements;
}

bool NSUserDefaults::boolForKey(const std::string& key) const {
    const auto value = valueFor(key);
    return value == "true" || value == "1";
}

void NSUserDefaults::setObject(const std::vector<double>& numbers, const std::string& key) {
    QByteArrayList texts;
    for (const double number : numbers)
        texts.append(QByteArray::number(number, 'g', QLocale::FloatingPointShortest));
    set(key, texts.join(", "));
}

void NSUserDefaults::setBool(bool value, const std::string& key) {
    set(key, value ? "true" : "false");
}

void NSUserDefaults::removeObjectForKey(const std::string& key) { set(key, std::nullopt); }
