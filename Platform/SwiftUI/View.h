#pragma once

#include "SwiftUI/Styles.h"

#include <functional>
#include <memory>
#include <string>

class Shape;
class Element;
struct Environment;

/// What is to be shown, as a value: it may be copied freely and never changes. A modifier gives a
/// new view that wraps this one, so their order counts. Lengths are in points.
class View {
public:
    /// What shows it, made anew for each drawing.
    using Maker = std::function<std::shared_ptr<Element>(const Environment&)>;
    explicit View(Maker maker) : m_maker(std::make_shared<Maker>(std::move(maker))) {}
    std::shared_ptr<Element> realise(const Environment& around) const { return (*m_maker)(around); }

    /// Any type with a body is a view. The body is asked for each time that the view is drawn.
    template <class T>
    requires requires(const T& view) { view.body(); }
    View(T view)
        : View(Maker([view = std::move(view)](const Environment& around) {
              return view.body().realise(around);
          })) {}

    View font(const Font& font) const;
    /// Additional room between the letters.
    View tracking(double tracking) const;
    View foregroundStyle(const ShapeStyle& style) const;
    /// The accent of the controls within.
    View tint(const Color& color) const;

    View padding(double length) const { return padding(Edge::Set::all, length); }
    View padding(Edge::Set edges, double length) const;

    /// An absent length is the view's own.
    struct FixedFrame {
        std::optional<double> width = std::nullopt;
        std::optional<double> height = std::nullopt;
        Alignment alignment = Alignment::center;
    };
    View frame(const FixedFrame& frame) const;

    /// As wide as there is room, up to `maxWidth`, which may be infinite.
    struct FlexibleFrame {
        double maxWidth;
        Alignment alignment = Alignment::center;
    };
    View frame(const FlexibleFrame& frame) const;

    /// Along an axis that is fixed the view takes the room it would like, whatever there is.
    struct FixedAxes {
        bool horizontal;
        bool vertical;
    };
    View fixedSize(const FixedAxes& axes) const;

    /// The background is offered the view's size and stands in its middle.
    View background(const View& background) const;
    /// In a plain button a click counts all over the view, not only on what it shows.
    View contentShape(const Shape& shape) const;

    View controlSize(ControlSize size) const;
    View buttonStyle(ButtonStyle style) const;
    View formStyle(FormStyle) const { return *this; } ///< There is only the one.
    View keyboardShortcut(KeyboardShortcut shortcut) const;

    struct ElementOptions {
        AccessibilityChildBehavior children;
    };
    /// One element to assistive technology, whatever stands within.
    View accessibilityElement(const ElementOptions& options) const;
    View accessibilityLabel(const std::string& label) const;
    View accessibilityHint(const std::string& hint) const;

    /// Runs the action each time that the view comes on the screen.
    View onAppear(std::function<void()> action) const;

private:
    std::shared_ptr<const Maker> m_maker;
};
