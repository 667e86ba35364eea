// Values that calls take and give.
#pragma once

#include "Foundation/NSObject.h"

#include <cstdint>
#include <string>

class NSNumber : public NSObject {
public:
    explicit NSNumber(uint32_t value) : m_value(value) {}
    uint32_t unsignedIntValue() const { return m_value; }

private:
    uint32_t m_value;
};

/// An address, as RFC 3986 writes it.
class NSURL : public NSObject {
public:
    /// Null for an empty text and one that is no address.
    static std::shared_ptr<NSURL> URLWithString(const std::string& text);

    const std::string& absoluteString() const { return m_text; }

private:
    explicit NSURL(std::string text) : m_text(std::move(text)) {}

    std::string m_text;
};

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
