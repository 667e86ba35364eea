#include "Foundation/NSBundle.h"

#include "Foundation/NSBundle+Private.h"

#include <QCoreApplication>
#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

std::string infoOf(const std::string& key) {
    return NSBundle::mainBundle().objectForInfoDictionaryKey(key).value_or("");
}

NSBundle& NSBundle::mainBundle() {
    static NSBundle bundle;
    return bundle;
}

NSBundle::NSBundle() {
    QFile file(":/Info.plist");
    if (!file.open(QIODevice::ReadOnly)) return;
    QXmlStreamReader xml(&file);
    std::string key;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() == u"key")
            key = xml.readElementText().toStdString();
        else if (xml.name() == u"string")
            m_infoDictionary[key] = xml.readElementText().toStdString();
    }
}

std::optional<std::string> NSBundle::bundleIdentifier() const {
    return objectForInfoDictionaryKey("CFBundleIdentifier");
}

// An installed program is in the folder of applications. Any other, such as one in a build tree or
// in someone's home, is in the bundle that its own folder is.
std::string NSBundle::bundlePath() const {
    const auto executable = QCoreApplication::applicationFilePath().toStdString();
    for (const char* const prefix : {"/usr/", "/opt/"})
        if (executable.starts_with(prefix))
            return "/Applications/" + infoOf("CFBundleName") + ".app";
    return executable.substr(0, std::max<size_t>(executable.rfind('/'), 1));
}

std::optional<std::string> NSBundle::objectForInfoDictionaryKey(const std::string& key) const {
    const auto found = m_infoDictionary.find(key);
    if (found == m_infoDictionary.end()) return std::nullopt;
    return found->second;
}
