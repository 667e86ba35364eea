#pragma once

#include "Harness/Folder.h"
#include "Harness/Process.h"

#include <string>

namespace Harness {

/// A private session bus that starts no services of its own.
class SessionBus {
public:
    SessionBus();

    const std::string& address() const { return m_address; }

private:
    Folder m_folder;
    Process m_daemon;
    std::string m_address;
};

} // namespace Harness
