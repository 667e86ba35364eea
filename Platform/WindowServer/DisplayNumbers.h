#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace WindowServer {

/// The numbers of displays: from what a monitor tells of itself, so that they are the same after a
/// restart, and never the same for two.
class DisplayNumbers {
public:
    /// `identity` is the manufacturer, product and serial number of an EDID, or the output's name
    /// where there is none. Twins with one EDID are told apart by the output. A number once given
    /// stays with its monitor.
    uint32_t numberOf(const std::string& identity, const std::string& output);

    /// Of an EDID, the bytes that tell monitors apart. Empty where it is too short.
    static std::string identityOf(const std::string& edid);

private:
    std::map<std::pair<std::string, std::string>, uint32_t> m_numbers;
};

} // namespace WindowServer
