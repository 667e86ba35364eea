#pragma once

#include <string>
#include <variant>
#include <vector>

/// A list as it may come out of the defaults. What is no number there is held as its text.
using NSArray = std::vector<std::variant<double, std::string>>;
