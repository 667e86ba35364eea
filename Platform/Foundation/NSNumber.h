#pragma once

#include "Foundation/NSObject.h"

#include <cstdint>

class NSNumber : public NSObject {
public:
    explicit NSNumber(uint32_t value) : m_value(value) {}

    uint32_t unsignedIntValue() const { return m_value; }

private:
    uint32_t m_value;
};
