#include "WindowServer/DisplayNumbers.h"

#include <algorithm>

namespace WindowServer {

namespace {

/// FNV-1a, 32 bits: offset basis 2166136261, prime 16777619.
uint32_t hash(const std::string& bytes) {
    uint32_t value = 2166136261u;
    for (const unsigned char byte : bytes)
        value = (value ^ byte) * 16777619u;
    return value;
}

} // namespace

uint32_t DisplayNumbers::numberOf(const std::string& identity, const std::string& output) {
    const auto key = std::pair(identity, output);
    if (const auto known = m_numbers.find(key); known != m_numbers.end()) return known->second;
    const auto taken = [this](uint32_t number) {
        return std::ranges::any_of(m_numbers, [=](const auto& e) { return e.second == number; });
    };
    uint32_t number = hash(identity);
    for (std::string salted = identity; taken(number); number = hash(salted))
        salted += output.empty() ? "+" : output;
    return m_numbers[key] = number;
}

std::string DisplayNumbers::identityOf(const std::string& edid) {
    return edid.size() < 16 ? std::string() : edid.substr(8, 8);
}

} // namespace WindowServer
