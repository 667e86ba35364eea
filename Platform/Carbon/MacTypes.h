#pragma once

#include <cstdint>

using UInt32 = uint32_t;
using FourCharCode = UInt32; ///< Four characters, the first in the most significant byte.
using OSType = FourCharCode;
using OSStatus = int32_t;
using OptionBits = UInt32;
using ItemCount = unsigned long;
using ByteCount = unsigned long;

enum : OSStatus {
    noErr = 0,
    paramErr = -50,
};
