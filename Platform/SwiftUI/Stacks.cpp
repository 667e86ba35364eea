#include "SwiftUI/Views.h"

#include "SwiftUI/Qt/Element.h"

#include <numeric>

namespace {

constexpr double defaultSpacing = 8;
constexpr double infinity = std::numeric_limits<double>::infinity();

class SpacerElement : public Element {
public:
    SpacerElement(const Environment&, double minLength) : m_minLength(minLength) {}
    bool isSpacer() const override { return true; }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return {std::max(m_minLength, proposal.width.value_or(0)),
                std::max(m_minLength, proposal.height.value_or(0))};
    }

private:
    const double m_minLength;
};

/// Along the stack each child takes its part of the room, the least flexible first, and spacers
/// share what is left. Lengths run along the stack, breadths across it.
class StackElement : public Element {
public:
    StackElement(const Environment& environment, bool vertical, bool centered,
                 std::optional<double> spacing, const std::vector<View>& children)
        : m_vertical(vertical), m_centered(centered), m_spacing(spacing) {
        for (const View& child : children)
            add(child, environment);
    }

    void place(const QRectF& rect) const override {
        const Proposal room = Proposal::of(rect.size());
        const std::vector<double> lengths = divide(room);
        double position = m_vertical ? rect.top() : rect.left();
        for (std::size_t i = 0; i < parts().size(); ++i) {
            const QSizeF size = sizeOf(i, lengths[i], room);
            const double across = m_centered ? (breadth(rect.size()) - breadth(size)) / 2 : 0;
            const QPointF origin = m_vertical ? QPointF(rect.left() + across, position)
                                              : QPointF(position, rect.top() + across);
            parts()[i]->place({origin, size});
            position += lengths[i] + gapAfter(i);
        }
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const std::vector<double> lengths = divide(proposal);
        double length = gaps();
        double broadest = 0;
        for (std::size_t i = 0; i < parts().size(); ++i) {
            length += lengths[i];
            if (!isSpacerAt(i))
                broadest = std::max(broadest, breadth(sizeOf(i, lengths[i], proposal)));
        }
        return m_vertical ? QSizeF(broadest, length) : QSizeF(length, broadest);
    }

private:
    double length(const QSizeF& size) const { return m_vertical ? size.height() : size.width(); }
    double breadth(const QSizeF& size) const { return m_vertical ? size.width() : size.height(); }
    bool isSpacerAt(std::size_t i) const { return parts()[i]->isSpacer(); }

    QSizeF sizeOf(std::size_t i, std::optional<double> length, const Proposal& room) const {
        return parts()[i]->sizeThatFits(m_vertical ? Proposal{room.width, length}
                                                   : Proposal{length, room.height});
    }
    double lengthOf(std::size_t i, std::optional<double> length, const Proposal& room) const {
        return this->length(sizeOf(i, length, room));
    }

    double gapAfter(std::size_t i) const {
        if (i + 1 >= parts().size()) return 0;
        if (m_spacing) return *m_spacing;
        return isSpacerAt(i) || isSpacerAt(i + 1) ? 0 : defaultSpacing;
    }

    double gaps() const {
        double sum = 0;
        for (std::size_t i = 0; i < parts().size(); ++i)
            sum += gapAfter(i);
        return sum;
    }

    using Place = std::pair<double, std::size_t>; ///< In the order in which room is given out.

    std::vector<Place> leastFlexibleFirst(const Proposal& room) const {
        std::vector<Place> order;
        for (std::size_t i = 0; i < parts().size(); ++i)
            if (!isSpacerAt(i))
                order.emplace_back(lengthOf(i, infinity, room) - lengthOf(i, 0, room), i);
        std::sort(order.begin(), order.end());
        return order;
    }

    /// How long each child is in that room.
    std::vector<double> divide(const Proposal& room) const {
        const std::optional<double> whole = m_vertical ? room.height : room.width;
        std::vector<double> lengths;
        for (std::size_t i = 0; i < parts().size(); ++i)
            lengths.push_back(!whole          ? lengthOf(i, std::nullopt, room)
                              : isSpacerAt(i) ? lengthOf(i, 0, room)
                                              : 0);
        if (!whole) return lengths;
        double rest = *whole - gaps() - std::accumulate(lengths.begin(), lengths.end(), 0.0);
        const std::vector<Place> order = leastFlexibleFirst(room);
        for (std::size_t n = 0; n < order.size(); ++n) {
            const auto i = order[n].second;
            const double share = std::max(0.0, rest) / static_cast<double>(order.size() - n);
            lengths[i] = lengthOf(i, share, room);
            rest -= lengths[i];
        }
        const auto spacers = static_cast<double>(parts().size() - order.size());
        for (std::size_t i = 0; i < parts().size(); ++i)
            if (isSpacerAt(i)) lengths[i] += std::max(0.0, rest) / spacers;
        return lengths;
    }

    const bool m_vertical;
    const bool m_centered;
    const std::optional<double> m_spacing;
};

/// A column of its own where no stack is around.
class GroupElement : public StackElement {
public:
    GroupElement(const Environment& environment, const std::vector<View>& views)
        : StackElement(environment, true, true, {}, views) {}
    bool isGroup() const override { return true; }
};

} // namespace

VStack::VStack(const Options& options, std::initializer_list<View> children)
    : View(makeView<StackElement>(true, options.alignment == HorizontalAlignment::center,
                                  options.spacing, std::vector(children))) {}

HStack::HStack(const Options& options, std::initializer_list<View> children)
    : View(makeView<StackElement>(false, options.alignment == VerticalAlignment::center,
                                  options.spacing, std::vector(children))) {}
Spacer::Spacer() : Spacer({.minLength = defaultSpacing}) {}
Spacer::Spacer(const Options& options) : View(makeView<SpacerElement>(options.minLength)) {}
ForEach::ForEach(const std::vector<View>& views) : View(group(views)) {}
View group(const std::vector<View>& views) { return makeView<GroupElement>(views); }
