#pragma once

#include "Foundation/NSObject.h"

#include <map>
#include <optional>
#include <string>

/// What the application says of itself, read from the property list embedded in the executable.
class NSBundle : public NSObject {
public:
    static NSBundle& mainBundle();

    /// Empty in an executable without a property list.
    std::optional<std::string> bundleIdentifier() const;

    /// "/Applications/" and its name where it is installed for everyone; else its folder.
    std::string bundlePath() const;

    /// Empty where the property list has no text under the key.
    std::optional<std::string> objectForInfoDictionaryKey(const std::string& key) const;

private:
    NSBundle();

    std::map<std::string, std::string> m_infoDictionary;
};
