#pragma once

#include "SwiftUI/View.h"

#include <initializer_list>
#include <optional>
#include <string>

/// Settings in sections; it scrolls where it is taller than its room.
struct Form : View {
    explicit Form(std::initializer_list<View> sections);
};

/// Rows that belong together, with a title above and an explanation below.
struct Section : View {
    struct Options {
        std::string header;
        std::optional<View> footer = std::nullopt;
    };
    Section(const Options& options, std::initializer_list<View> rows);
};
