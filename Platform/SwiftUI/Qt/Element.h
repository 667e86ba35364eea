// What shows a tree of views: its environment, its widgets and its elements.
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

/// What a view takes over from those around it.
struct Environment {
    QWidget* parent; ///< Where its widgets stand.
    WidgetPool* pool;
    std::vector<std::function<void()>>* appearActions; ///< Run as the tree comes on the screen.

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

/// The room that an element is offered, in points. An absent length asks for the ideal one, an
/// infinite one for the largest.
struct Proposal {
    std::optional<double> width;
    std::optional<double> height;
    bool operator==(const Proposal&) const = default;

    static Proposal of(const QSizeF& size) { return {size.width(), size.height()}; }
};

/// A view with a place on the screen. The one around offers it room, it answers how much it takes,
/// and the one around decides where. It lives for one drawing of the tree. Each kind of view
/// derives one, which is made with what the view takes over.
class Element {
public:
    Element() = default;
    Element(const View& content, const Environment& environment) { add(content, environment); }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    virtual ~Element() = default;

    QSizeF sizeThatFits(const Proposal& proposal) const;
    /// What it reads as in one piece: a text of its own, or those within in order, joined with ",
    /// ".
    std::string accessibleText() const;

    // Unless its kind says otherwise, an element is its parts, one upon the other, as large as the
    // last of them; within its widget, if it has one.

    /// In the coordinates of the widget around, and of a size that fits some proposal.
    virtual void place(const QRectF& rect) const;

    /// Whether its parts stand in its place in the stack around.
    virtual bool isGroup() const { return false; }
    /// Whether it is what takes the rest of a stack, and parts its neighbours by itself.
    virtual bool isSpacer() const { return false; }

    using Parts = std::vector<std::shared_ptr<Element>>;
    const Parts& parts() const { return m_parts; }

protected:
    virtual QSizeF measure(const Proposal& proposal) const;

    void add(const View& view, const Environment& environment);
    void readAs(const std::string& text) { m_text = text; }

    template <class Widget> Widget& take(const Environment& environment) {
        auto& widget = environment.pool->take<Widget>(*environment.parent);
        m_widget = &widget;
        widget.setAccessibleName(QString::fromStdString(environment.accessibilityLabel));
        widget.setAccessibleDescription(QString::fromStdString(environment.accessibilityHint));
        return widget;
    }
    template <class Widget = QWidget> Widget& widget() const {
        return static_cast<Widget&>(*m_widget);
    }

private:
    QWidget* m_widget = nullptr;
    Parts m_parts;
    std::optional<std::string> m_text;
    /// A deep tree asks its leaves for the same sizes again and again.
    mutable std::vector<std::pair<Proposal, QSizeF>> m_measured;
};

template <class Kind, class... Arguments> View makeView(const Arguments&... arguments) {
    return View([arguments...](const Environment& environment) {
        return std::make_shared<Kind>(environment, arguments...);
    });
}

/// The nearest whole points: a widget stands on them.
QRect wholePoints(const QRectF& rect);

/// Views that stand one by one in the stack around.
View group(const std::vector<View>& views);

/// A view within another environment.
View within(const View& view, std::function<void(Environment&)> change);

using Painting = std::function<void(QPainter&, const QRectF&, const Environment&)>;

/// A view that is nothing but what is painted. It fills its room.
View painted(const Painting& painting);

/// A rectangle whose corners bend gradually: each begins a little before a circle of that radius
/// would, and passes through the middle of that circle's arc.
QPainterPath continuousCorners(const QRectF& rect, double radius);
