#pragma once

#include "Foundation/NSObject.h"

#include <memory>
#include <string>

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
