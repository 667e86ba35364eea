#pragma once

#include "SwiftUI/Qt/Environment.h"
#include "SwiftUI/Qt/WidgetPool.h"
#include "SwiftUI/View.h"

#include <functional>
#include <utility>
#include <vector>

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
