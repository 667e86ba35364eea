#pragma once

#include <QRectF>

#include <memory>
#include <optional>
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

/// A part of a view tree with a place on the screen. The one around offers it room, it answers how
/// much it takes, and the one around decides where. It lives for one drawing of the tree.
class Element {
public:
    Element() = default;
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    virtual ~Element() = default;

    QSizeF sizeThatFits(const Proposal& proposal) const;

    /// In the coordinates of the widget around, and of a size that fits some proposal.
    virtual void place(const QRectF& rect) = 0;

    /// Whether it is what takes the rest of a stack, and parts its neighbours by itself.
    virtual bool isSpacer() const { return false; }

protected:
    virtual QSizeF measure(const Proposal& proposal) const = 0;

private:
    /// A deep tree asks its leaves for the same sizes again and again.
    mutable std::vector<std::pair<Proposal, QSizeF>> m_measured;
};

using ElementPointer = std::unique_ptr<Element>;

/// The nearest whole points: a widget stands on them.
QRect wholePoints(const QRectF& rect);
