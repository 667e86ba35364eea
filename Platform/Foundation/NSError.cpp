#include "Foundation/NSError.h"

NSError::NSError(NSErrorDomain domain, NSInteger code, std::string localizedDescription)
    : m_domain(std::move(domain)), m_code(code),
      m_localizedDescription(std::move(localizedDescription)) {}

std::string NSError::description() const {
    return "Error Domain=" + m_domain + " Code=" + std::to_string(m_code) + " \"" +
           m_localizedDescription + "\"";
}
