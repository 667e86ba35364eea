#pragma once

#include "Foundation/NSObject.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

class DefaultsFile;

/// A list as it may come out of the defaults. What is no number there is held as its text.
using NSArray = std::vector<std::variant<double, std::string>>;

/// Values under string keys that outlive the process. They stand in a file named by the bundle
/// identifier in the user's configuration folder. A value is written when its setter returns;
/// where nothing can be written, it lives as long as the process.
class NSUserDefaults : public NSObject {
public:
    static NSUserDefaults& standardUserDefaults();
    ~NSUserDefaults() override;

    /// Empty where the value is missing or no list.
    std::optional<NSArray> arrayForKey(const std::string& key) const;
    /// False where the value is missing or says nothing of the kind.
    bool boolForKey(const std::string& key) const;

    void setObject(const std::vector<double>& numbers, const std::string& key);
    void setBool(bool value, const std::string& key);
    void removeObjectForKey(const std::string& key);

private:
    NSUserDefaults();

    const std::unique_ptr<DefaultsFile> m_file;
};
