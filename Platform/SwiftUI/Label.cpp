#include "SwiftUI/Stacks.h"
#include "SwiftUI/Text.h"

Label::Label(const std::string& title, const Options& options)
    : View(HStack({.spacing = 6}, {Image({.systemName = options.systemImage}), Text(title)})) {}
