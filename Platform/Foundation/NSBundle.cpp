#include "Foundation/NSBundle.h"

#include <QFile>
#include <QXmlStreamReader>

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
    const auto found = m_infoDictionary.find("CFBundleIdentifier");
    if (found == m_infoDictionary.end()) return std::nullopt;
    return found->second;
}
