// What shows a tree of views: its surroundings, its widgets and its nodes.
#pragma once

#include "SwiftUI/Styles.h"
#include "SwiftUI/View.h"

#include <QFont>
#include <QPainterPath>
#include <QPalette>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <string>
#include <typeinfo>
#include <vector>

/// What a view takes over from those around it.
struct Environment {
    QPalette palette;
    QFont systemFont;

    Font font = Font::body;
    double tracking = 0;
    QColor primary; ///< What text is drawn in unless a style says otherwise.
    std::optional<ShapeStyle> foregroundStyle;
    std::optional<Color> tint;

    ControlSize controlSize = ControlSize::regular;
    ButtonStyle buttonStyle = ButtonStyle::automatic;

    // For the one element that stands within.
    std::optional<KeyboardShortcut> keyboardShortcut;
    std::string accessibilityLabel;
    std::string accessibilityHint;
};

QFont fontOf(const Environment& environment);
QColor foregroundOf(const Environment& environment);
/// The colour that marks what is on or important; the desktop's where no tint is set.
QColor tintOf(const Environment& environment);
QColor colorOf(const Color& color, const Environment& environment);

/// The widgets of a drawn tree. Drawn anew, a tree finds the widgets of the time before again, in
/// their order, so that whoever has the focus, is pressed or scrolled stays so.
class WidgetPool {
public:
    template <class Widget> Widget& take(QWidget& parent) {
        const auto again =
            std::find_if(m_before.begin(), m_before.end(), [&](const QPointer<QWidget>& each) {
                return each && each->parentWidget() == &parent && typeid(*each) == typeid(Widget);
            });
        if (again == m_before.end()) return keep(*new Widget(&parent));
        auto& widget = static_cast<Widget&>(**again);
        m_before.erase(again);
        return keep(widget);
    }

    void begin();
    /// Drops what was not taken, and puts the others in the tree's order, for the Tab key too.
    void end();

private:
    template <class Widget> Widget& keep(Widget& widget) {
        m_now.emplace_back(&widget);
        widget.show();
        return widget;
    }

    std::vector<QPointer<QWidget>> m_before;
    std::vector<QPointer<QWidget>> m_now;
};

/// The room that an element is offered, in points. An absent length asks for the ideal one, an
/// infinite one for the largest.
struct Proposal {
    std::optional<double> width;
    std::optional<double> height;
    bool operator==(const Proposal&) const = default;

    static Proposal of(const QSizeF& size) { return {size.width(), size.height()}; }
};

/// What a view is realised with.
struct Surroundings {
    Environment environment;
    QWidget* parent; ///< Where its widgets stand.
    WidgetPool& pool;
    std::vector<std::function<void()>>& appearActions; ///< Run as the tree comes on the screen.
};

/// A view with a place on the screen. The one around offers it room, it answers how much it takes,
/// and the one around decides where. It lives for one drawing of the tree.
class Element {
public:
    /// Realises the view: what it consists of shows nothing before it is placed.
    Element(const View& view, const Surroundings& surroundings);

    QSizeF sizeThatFits(const Proposal& proposal) const;
    /// In the coordinates of the widget around, and of a size that fits some proposal.
    void place(const QRectF& rect) const;
    bool isSpacer() const;

    // What the view's node makes of it, and finds again when it is measured and placed.

    template <class Widget> Widget& take(const Surroundings& surroundings) {
        auto& widget = surroundings.pool.take<Widget>(*surroundings.parent);
        hold(widget, surroundings.environment);
        return widget;
    }
    void add(const View& view, const Surroundings& surroundings) {
        m_parts.emplace_back(view, surroundings);
    }

    bool hasWidget() const { return m_widget; }
    template <class Widget = QWidget> Widget& widget() const {
        return static_cast<Widget&>(*m_widget);
    }
    const std::vector<Element>& parts() const { return m_parts; }

private:
    void hold(QWidget& widget, const Environment& environment);

    View m_view;
    QWidget* m_widget = nullptr;
    std::vector<Element> m_parts;
    /// A deep tree asks its leaves for the same sizes again and again.
    mutable std::vector<std::pair<Proposal, QSizeF>> m_measured;
};

/// The nearest whole points: a widget stands on them.
QRect wholePoints(const QRectF& rect);

/// What stands behind a view: how it is realised, laid out and read. Each kind of view derives one.
class ViewNode {
public:
    explicit ViewNode(std::vector<View> children = {}) : m_children(std::move(children)) {}
    ViewNode(const ViewNode&) = delete;
    ViewNode& operator=(const ViewNode&) = delete;
    virtual ~ViewNode() = default;

    const std::vector<View>& children() const { return m_children; }

    /// Whether its children stand in its place in the stack around.
    virtual bool isGroup() const { return false; }
    /// Whether it is what takes the rest of a stack, and parts its neighbours by itself.
    virtual bool isSpacer() const { return false; }

    /// What it reads as in one piece: the texts within in order, joined with ", ".
    virtual std::string accessibleText() const;

    // Unless its kind says otherwise, a view is its children, one upon the other, as large as the
    // last of them; within its widget, if it has one.
    virtual void realise(Element& element, const Surroundings& surroundings) const;
    virtual QSizeF measure(const Element& element, const Proposal& proposal) const;
    virtual void place(const Element& element, const QRectF& rect) const;

private:
    const std::vector<View> m_children;
};

template <class Node, class... Arguments> View makeView(Arguments&&... arguments) {
    return View(std::make_shared<const Node>(std::forward<Arguments>(arguments)...));
}

/// Views that stand one by one in the stack around.
View group(const std::vector<View>& views);
/// With what such groups hold in their place.
std::vector<View> flattened(const std::vector<View>& views);

/// A view within other surroundings.
using SurroundingsChange = std::function<void(Surroundings&)>;
View surrounded(const View& view, SurroundingsChange change);

using Painting = std::function<void(QPainter&, const QRectF&, const Environment&)>;

/// A view that is nothing but what is painted. It fills its room, but for a height of its own.
View painted(Painting painting, std::optional<double> height = std::nullopt);

/// A rectangle whose corners bend gradually: each begins a little before a circle of that radius
/// would, and passes through the middle of that circle's arc.
QPainterPath continuousCorners(const QRectF& rect, double radius);
