#pragma once

#include <string>

/// Writes one line to the error stream, which a desktop session keeps in its log.
void NSLog(const std::string& line);
