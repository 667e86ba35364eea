#pragma once

#include "Foundation/NSObject.h"

#include <memory>
#include <optional>
#include <string>

/// A symbol that the platform draws. As a template it takes the colour of its surroundings.
class NSImage : public NSObject {
public:
    /// Null for a symbol that the platform does not have.
    static std::shared_ptr<NSImage>
    imageWithSystemSymbolName(const std::string& name,
                              const std::optional<std::string>& accessibilityDescription);

    const std::string& name() const { return m_name; }
    const std::optional<std::string>& accessibilityDescription() const {
        return m_accessibilityDescription;
    }

    bool isTemplate() const { return m_template; }
    void setTemplate(bool isTemplate) { m_template = isTemplate; }

private:
    NSImage(std::string name, std::optional<std::string> accessibilityDescription)
        : m_name(std::move(name)), m_accessibilityDescription(std::move(accessibilityDescription)) {
    }

    std::string m_name;
    std::optional<std::string> m_accessibilityDescription;
    bool m_template = false;
};
