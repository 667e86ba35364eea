#pragma once

#include "Foundation/NSObjCRuntime.h"
#include "Foundation/NSObject.h"

#include <string>

using NSErrorDomain = std::string;

/// Why something that was asked for was not done.
class NSError : public NSObject {
public:
    NSError(NSErrorDomain domain, NSInteger code, std::string localizedDescription)
        : m_domain(std::move(domain)), m_code(code),
          m_localizedDescription(std::move(localizedDescription)) {}

    /// A sentence for people.
    const std::string& localizedDescription() const { return m_localizedDescription; }

    /// The whole error on one line, for logs.
    std::string description() const {
        return "Error Domain=" + m_domain + " Code=" + std::to_string(m_code) + " \"" +
               m_localizedDescription + "\"";
    }

private:
    const NSErrorDomain m_domain;
    const NSInteger m_code;
    const std::string m_localizedDescription;
};
