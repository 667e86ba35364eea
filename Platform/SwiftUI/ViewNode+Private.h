#pragma once

#include "SwiftUI/SwiftUI.h"

#include <variant>
#include <vector>

// What stands behind a view: one of the views that the platform draws itself, a view wrapped in a
// modifier, or a body still to be asked for.

struct StackNode {
    bool vertical;
    /// Across the stack.
    std::variant<HorizontalAlignment, VerticalAlignment> alignment;
    std::optional<double> spacing;
    std::vector<View> children;
};

struct SpacerNode {
    std::optional<double> minLength;
};

struct DividerNode {};

struct ScrollNode {
    View content;
};

struct ForEachNode {
    std::vector<std::string> ids;
    std::vector<View> children; ///< One for each id.
};

struct FormNode {
    std::vector<View> sections;
};

struct SectionNode {
    std::string header;
    std::optional<View> footer;
    std::vector<View> rows;
};

struct TextNode {
    std::string text;
    bool verbatim;
};

struct ImageNode {
    std::string systemName;
};

struct LabelNode {
    std::string title;
    std::string systemImage;
};

struct ShapeNode {
    Shape shape;
    Color fill;
};

struct ButtonNode {
    std::function<void()> action;
    View label;
};

struct ToggleNode {
    std::string title;
    Binding<bool> isOn;
};

struct BodyNode {
    std::function<View()> body;
};

struct Tracking {
    double length;
};
struct Tint {
    Color color;
};
struct Padding {
    Edge::Set edges;
    double length;
};
struct Background {
    View view;
};
struct AccessibilityLabel {
    std::string text;
};
struct AccessibilityHint {
    std::string text;
};
struct OnAppear {
    std::function<void()> action;
};

using Modifier = std::variant<Font, Tracking, ShapeStyle, Tint, Padding, View::FixedFrame,
                              View::FlexibleFrame, View::FixedAxes, Background, Shape, ControlSize,
                              ButtonStyle, FormStyle, KeyboardShortcut, View::ElementOptions,
                              AccessibilityLabel, AccessibilityHint, OnAppear>;

struct ModifiedNode {
    View content;
    Modifier modifier;
};

struct ViewNode {
    std::variant<StackNode, SpacerNode, DividerNode, ScrollNode, ForEachNode, FormNode, SectionNode,
                 TextNode, ImageNode, LabelNode, ShapeNode, ButtonNode, ToggleNode, BodyNode,
                 ModifiedNode>
        kind;
};

/// For std::visit: one function for each kind.
template <class... Functions> struct Overloaded : Functions... { using Functions::operator()...; };
template <class... Functions> Overloaded(Functions...) -> Overloaded<Functions...>;
