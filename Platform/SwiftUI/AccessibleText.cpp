#include "SwiftUI/AccessibleText+Private.h"

#include "SwiftUI/ViewNode+Private.h"

namespace {

std::string joined(const std::vector<View>& views) {
    std::string all;
    for (const View& view : views) {
        const std::string text = accessibleText(view);
        if (!all.empty() && !text.empty()) all += ", ";
        all += text;
    }
    return all;
}

std::string textOf(const ModifiedNode& node) {
    const auto* const label = std::get_if<AccessibilityLabel>(&node.modifier);
    if (label) return label->text;
    // A view whose children are ignored reads as nothing unless a label stands outside.
    if (std::holds_alternative<View::ElementOptions>(node.modifier)) return {};
    return accessibleText(node.content);
}

} // namespace

std::string accessibleText(const View& view) {
    return std::visit(Overloaded{
                          [](const TextNode& text) { return text.text; },
                          [](const LabelNode& label) { return label.title; },
                          [](const ToggleNode& toggle) { return toggle.title; },
                          [](const ButtonNode& button) { return accessibleText(button.label); },
                          [](const StackNode& stack) { return joined(stack.children); },
                          [](const ForEachNode& forEach) { return joined(forEach.children); },
                          [](const BodyNode& node) { return accessibleText(node.body()); },
                          [](const ModifiedNode& node) { return textOf(node); },
                          [](const auto&) { return std::string(); },
                      },
                      view.node().kind);
}
