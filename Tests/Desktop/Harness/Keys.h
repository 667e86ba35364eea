#pragma once

#include <cstdint>
#include <vector>

namespace Harness {

// Keys by their numbers on every PC keyboard.
inline constexpr uint8_t escapeKey = 9;
inline constexpr uint8_t tabKey = 23;
inline constexpr uint8_t qKey = 24;
inline constexpr uint8_t returnKey = 36;
inline constexpr uint8_t controlKey = 37;
inline constexpr uint8_t aKey = 38;
inline constexpr uint8_t shiftKey = 50;
inline constexpr uint8_t nKey = 57;
inline constexpr uint8_t altKey = 64;
inline constexpr uint8_t spaceKey = 65;
inline constexpr uint8_t capsLock = 66;
inline constexpr uint8_t numLock = 77;
inline constexpr uint8_t scrollLock = 78;
inline constexpr uint8_t f11Key = 95;
inline constexpr uint8_t leftKey = 113;
inline constexpr uint8_t rightKey = 114;
inline constexpr uint8_t downKey = 116;
inline constexpr uint8_t superKey = 133;

/// What toggles from anywhere.
inline const std::vector<uint8_t> chordKeys = {controlKey, altKey, superKey, nKey};

} // namespace Harness
