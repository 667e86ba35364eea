#pragma once

#include "Foundation/NSObject.h"

#include <any>
#include <map>
#include <string>

using NSAttributedStringKey = std::string;

inline const NSAttributedStringKey NSFontAttributeName = "NSFont";             ///< An NSFont.
inline const NSAttributedStringKey NSForegroundColorAttributeName = "NSColor"; ///< An NSColor.

/// A text, and how all of it looks.
class NSAttributedString : public NSObject {
public:
    using Attributes = std::map<NSAttributedStringKey, std::any>;

    NSAttributedString(std::string string, Attributes attributes)
        : m_string(std::move(string)), m_attributes(std::move(attributes)) {}

    const std::string& string() const { return m_string; }
    const Attributes& attributes() const { return m_attributes; }

private:
    std::string m_string;
    Attributes m_attributes;
};
