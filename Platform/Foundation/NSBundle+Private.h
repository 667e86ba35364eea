#pragma once

#include <string>

/// What the main bundle says under the key; empty where it says nothing.
std::string infoOf(const std::string& key);
