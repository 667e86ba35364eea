#include "Foundation/NSBundle.h"

#include "Foundation/NSBundle+Private.h"

#include <QCoreApplication>
#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>

namespace {
std::optional<std::string> installedExecutable;
}

void installMainExecutable(std::optional<std::string> path) {
    installedExecutable = std::move(path);
}

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

std::string NSBundle::bundlePath() const {
    const auto executable =
        installedExecutable.value_or(QCoreApplication::applicationFilePath().toStdString());
    return bundlePathOf(executable, infoOf("CFBundleName"));
}

std::optional<std::string> NSBundle::objectForInfoDictionaryKey(const std::string& key) const {
    const auto found = m_infoDictionary.find(key);
    if (found == m_infoDictionary.end()) return std::nullopt;
    return found->second;
}

std::string bundlePathOf(const std::string& executable, const std::string& name) {
    for (const char* const prefix : {"/usr/", "/opt/"})
        if (executable.starts_with(prefix)) return "/Applications/" + name + ".app";
    return executable.substr(0, std::max<size_t>(executable.rfind('/'), 1));
}
