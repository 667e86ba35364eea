#include "Foundation/NSLog.h"

#include <cstdio>

void NSLog(const std::string& line) {
    const std::string whole = line + '\n'; // At once, so that lines of others do not fall into it.
    std::fwrite(whole.data(), 1, whole.size(), stderr);
}
