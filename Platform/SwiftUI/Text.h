// What stands there to be read.
#pragma once

#include "SwiftUI/View.h"

#include <string>

/// Wraps where it is wider than its room.
struct Text : View {
    /// In English, as everything here is.
    explicit Text(const std::string& text);
    static Text verbatim(const std::string& text) { return Text(text); }
};

/// A symbol as large as the text around it. One that the platform lacks takes its room and shows
/// nothing.
struct Image : View {
    struct Options {
        std::string systemName;
    };
    explicit Image(const Options& options);
};

/// A title with a symbol before it.
struct Label : View {
    struct Options {
        std::string systemImage;
    };
    Label(const std::string& title, const Options& options);
};
