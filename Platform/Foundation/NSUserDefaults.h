#pragma once

#include "Foundation/NSObject.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

/// A list as it may come out of the defaults. What is no number there is held as its text.
using NSArray = std::vector<std::variant<double, std::string>>;

/// Values under string keys that outlive the process. They stand in a file named by the bundle
/// identifier in the user's configuration folder, in the section [General]; whatever else it holds
/// stays as it is. The file is read anew each time, and replaced as a whole. A value is written
/// when its setter returns; where nothing can be written, it lives as long as the process.
class NSUserDefaults : public NSObject {
public:
    static NSUserDefaults& standardUserDefaults();

    /// Empty where the value is missing or no list of two or more.
    std::optional<NSArray> arrayForKey(const std::string& key) const;
    /// False where the value is missing or says nothing of the kind.
    bool boolForKey(const std::string& key) const;

    /// Two numbers or more.
    void setObject(const std::vector<double>& numbers, const std::string& key);
    void setBool(bool value, const std::string& key);
    void removeObjectForKey(const std::string& key);
};
