#include "SwiftUI/Realisation+Private.h"

#include "SwiftUI/AccessibleText+Private.h"
#include "SwiftUI/ButtonWidget+Private.h"
#include "SwiftUI/ContainerElements+Private.h"
#include "SwiftUI/LayoutElements+Private.h"

#include <limits>

namespace {

constexpr double titleSpacing = 6; ///< Between a label's symbol and its title.

double shareBefore(const StackNode& stack) {
    const bool centered = std::visit(
        [](auto alignment) { return alignment == decltype(alignment)::center; }, stack.alignment);
    return centered ? 0.5 : 0;
}

QMarginsF marginsOf(const Padding& padding) {
    const double across = padding.edges == Edge::Set::vertical ? 0 : padding.length;
    const double down = padding.edges == Edge::Set::horizontal ? 0 : padding.length;
    return {across, down, across, down};
}

ElementPointer fillWidth(ElementPointer content) {
    return makeFrame(
        {.maxWidth = std::numeric_limits<double>::infinity(), .alignment = Alignment::leading},
        std::move(content));
}

/// The modifiers that what stands within takes over. False for any other.
bool takeOver(const Modifier& modifier, Environment& environment) {
    bool isKnown = true;
    std::visit(
        Overloaded{
            [&](const Font& font) { environment.font = font; },
            [&](const Tracking& tracking) { environment.tracking = tracking.length; },
            [&](const ShapeStyle& style) { environment.foregroundStyle = style; },
            [&](const Tint& tint) { environment.tint = tint.color; },
            [&](ControlSize size) { environment.controlSize = size; },
            [&](ButtonStyle style) { environment.buttonStyle = style; },
            [&](KeyboardShortcut shortcut) { environment.keyboardShortcut = shortcut; },
            [&](const AccessibilityLabel& label) { environment.accessibilityLabel = label.text; },
            [&](const AccessibilityHint& hint) { environment.accessibilityHint = hint.text; },
            [](FormStyle) {}, // There is only the one.
            [&](const auto&) { isKnown = false; },
        },
        modifier);
    return isKnown;
}

} // namespace

struct Realisation::Part {
    const Environment& environment;
    WidgetPlace place;
    const View* view = nullptr;
};

ElementPointer Realisation::realise(const View& view, const Environment& environment,
                                    QWidget& parent) {
    return realise({environment, {m_pool, parent}, &view});
}

ElementPointer Realisation::realise(const Part& part) {
    const Environment& environment = part.environment;
    return std::visit(
        Overloaded{
            [](const SpacerNode& spacer) { return makeSpacer(spacer); },
            [&](const DividerNode&) { return makeDivider(environment, part.place); },
            [&](const TextNode& text) { return makeText(text.text, environment, part.place); },
            [&](const ImageNode& image) {
                return makeSymbol(image.systemName, environment, part.place);
            },
            [&](const ShapeNode& node) {
                return makeShape(node.shape, colorOf(node.fill, environment), part.place);
            },
            [&](const ToggleNode& toggle) { return makeSwitch(toggle, environment, part.place); },
            [&](const BodyNode& node) {
                return realise(node.body(), environment, part.place.parent);
            },
            [&](const auto& node) { return realise(node, part); },
        },
        part.view->node().kind);
}

ElementPointer Realisation::realise(const StackNode& stack, const Part& part) {
    return makeStack(stack.vertical, shareBefore(stack), stack.spacing,
                     realiseAll(stack.children, part));
}

ElementPointer Realisation::realise(const ForEachNode& forEach, const Part& part) {
    return makeStack(true, 0.5, std::nullopt, realiseAll(forEach.children, part));
}

ElementPointer Realisation::realise(const ScrollNode& scroll, const Part& part) {
    ScrollWidget& widget = takeScroll(part.environment, part.place);
    return makeScroll(widget, realise(scroll.content, part.environment, contentOf(widget)));
}

ElementPointer Realisation::realise(const FormNode& form, const Part& part) {
    constexpr double margin = 20;
    constexpr double sectionSpacing = 20;
    ScrollWidget& widget = takeScroll(part.environment, part.place);
    const Part within{part.environment, part.place.within(contentOf(widget))};
    auto sections = makeStack(true, 0, sectionSpacing, realiseAll(form.sections, within));
    return makeScroll(
        widget, makePadding({margin, margin, margin, margin}, fillWidth(std::move(sections))));
}

ElementPointer Realisation::realise(const SectionNode& section, const Part& part) {
    constexpr double inset = 10;
    constexpr double spacing = 6;
    Environment header = part.environment;
    header.font = Font::headline;
    Environment footer = part.environment;
    footer.font = Font::caption;
    footer.foregroundStyle = HierarchicalShapeStyle::secondary;

    std::vector<ElementPointer> parts;
    parts.push_back(
        makePadding({inset, 0, inset, 0}, makeText(section.header, header, part.place)));
    ElementPointer card = makeCard(part.environment, part.place);
    parts.push_back(makeBackground(std::move(card), realiseRows(section.rows, part)));
    if (section.footer)
        parts.push_back(
            makePadding({inset, 0, inset, 0}, realise(*section.footer, footer, part.place.parent)));
    return makeStack(true, 0, spacing, std::move(parts));
}

ElementPointer Realisation::realiseRows(const std::vector<View>& rows, const Part& part) {
    constexpr double inset = 10;
    std::vector<ElementPointer> lines;
    for (ElementPointer& row : realiseAll(rows, part)) {
        if (!lines.empty())
            lines.push_back(
                makePadding({inset, 0, inset, 0}, makeDivider(part.environment, part.place)));
        lines.push_back(makePadding({inset, inset, inset, inset}, fillWidth(std::move(row))));
    }
    return makeStack(true, 0, 0, std::move(lines));
}

ElementPointer Realisation::realise(const LabelNode& label, const Part& part) {
    std::vector<ElementPointer> parts;
    parts.push_back(makeSymbol(label.systemImage, part.environment, part.place));
    parts.push_back(makeText(label.title, part.environment, part.place));
    return makeStack(false, 0.5, titleSpacing, std::move(parts));
}

ElementPointer Realisation::realise(const ButtonNode& button, const Part& part) {
    ButtonWidget& widget =
        takeButton(button, accessibleText(button.label), part.environment, part.place);
    const Environment environment = labelEnvironment(part.environment);
    return makeButton(widget, part.environment, realise(button.label, environment, widget));
}

ElementPointer Realisation::realise(const ModifiedNode& node, const Part& part) {
    Environment environment = part.environment;
    const bool takenOver = takeOver(node.modifier, environment);
    QWidget& parent = part.place.parent;
    if (takenOver) return realise(node.content, environment, parent);

    const auto content = [&] { return realise(node.content, environment, parent); };
    return std::visit(
        Overloaded{
            [&](const Padding& padding) { return makePadding(marginsOf(padding), content()); },
            [&](const View::FixedFrame& frame) { return makeFrame(frame, content()); },
            [&](const View::FlexibleFrame& frame) { return makeFrame(frame, content()); },
            [&](const View::FixedAxes& axes) { return makeFixedSize(axes, content()); },
            [&](const Background& it) {
                ElementPointer background = realise(it.view, environment, parent);
                return makeBackground(std::move(background), content());
            },
            [&](const Shape&) {
                if (auto* const button = dynamic_cast<ButtonWidget*>(&parent))
                    button->setHasContentShape(true);
                return content();
            },
            [&](const View::ElementOptions&) {
                QWidget& group = takeGroup(environment, part.place);
                environment.accessibilityLabel.clear();
                environment.accessibilityHint.clear();
                return makeGroup(group, realise(node.content, environment, group));
            },
            [&](const OnAppear& it) {
                m_appearActions.push_back(it.action);
                return content();
            },
            [&](const auto&) { return content(); },
        },
        node.modifier);
}

std::vector<ElementPointer> Realisation::realiseAll(const std::vector<View>& views,
                                                    const Part& part) {
    std::vector<ElementPointer> elements;
    for (const View& view : views) {
        if (const auto* const forEach = std::get_if<ForEachNode>(&view.node().kind)) {
            for (ElementPointer& element : realiseAll(forEach->children, part))
                elements.push_back(std::move(element));
            continue;
        }
        elements.push_back(realise(view, part.environment, part.place.parent));
    }
    return elements;
}
