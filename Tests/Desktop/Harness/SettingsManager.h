#pragma once

#include "Harness/XClient.h"

#include <map>
#include <string>

namespace Harness {

/// The one program that tells all others of the desktop's settings on the X server itself.
class SettingsManager {
public:
    explicit SettingsManager(const std::string& display);

    void tell(const std::map<std::string, std::string>& texts,
              const std::map<std::string, uint32_t>& numbers = {});

private:
    XClient m_client;
    xcb_window_t m_window;
    uint32_t m_serial = 0; ///< Of all that is told, for who looks for what has changed.
};

} // namespace Harness
