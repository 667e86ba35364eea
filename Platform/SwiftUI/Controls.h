#pragma once

#include "SwiftUI/Binding.h"
#include "SwiftUI/View.h"

#include <functional>
#include <string>

/// Runs its action when it is pressed.
struct Button : View {
    struct Options {
        std::function<void()> action;
        View label;
    };
    explicit Button(const Options& options);
    Button(const std::string& title, std::function<void()> action);
};

/// A title and a switch, which shows a value and changes it.
struct Toggle : View {
    struct Options {
        Binding<bool> isOn;
    };
    Toggle(const std::string& title, const Options& options);
};
