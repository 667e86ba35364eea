#include "SwiftUI/Views.h"

#include "SwiftUI/Qt/ViewNode.h"

#include <numeric>

namespace {

constexpr double defaultSpacing = 8;
constexpr double infinity = std::numeric_limits<double>::infinity();

class SpacerNode : public ViewNode {
public:
    explicit SpacerNode(double minLength) : m_minLength(minLength) {}
    bool isSpacer() const override { return true; }

    QSizeF measure(const Element&, const Proposal& proposal) const override {
        return {std::max(m_minLength, proposal.width.value_or(0)),
                std::max(m_minLength, proposal.height.value_or(0))};
    }

private:
    const double m_minLength;
};

using Children = std::vector<Element>;

/// Along the stack each child takes its part of the room, the least flexible first, and spacers
/// share what is left. Lengths run along the stack, breadths across it.
class StackNode : public ViewNode {
public:
    StackNode(bool vertical, bool centered, std::optional<double> spacing,
              const std::vector<View>& children)
        : ViewNode(flattened(children)), m_vertical(vertical), m_centered(centered),
          m_spacing(spacing) {}

    QSizeF measure(const Element& element, const Proposal& proposal) const override {
        const Children& children = element.parts();
        const std::vector<double> lengths = divide(children, proposal);
        double length = gaps(children);
        double broadest = 0;
        for (std::size_t i = 0; i < children.size(); ++i) {
            length += lengths[i];
            if (!children[i].isSpacer())
                broadest = std::max(broadest, breadth(sizeOf(children[i], lengths[i], proposal)));
        }
        return m_vertical ? QSizeF(broadest, length) : QSizeF(length, broadest);
    }

    void place(const Element& element, const QRectF& rect) const override {
        const Children& children = element.parts();
        const Proposal room = Proposal::of(rect.size());
        const std::vector<double> lengths = divide(children, room);
        double position = m_vertical ? rect.top() : rect.left();
        for (std::size_t i = 0; i < children.size(); ++i) {
            const QSizeF size = sizeOf(children[i], lengths[i], room);
            const double across = m_centered ? (breadth(rect.size()) - breadth(size)) / 2 : 0;
            const QPointF origin = m_vertical ? QPointF(rect.left() + across, position)
                                              : QPointF(position, rect.top() + across);
            children[i].place({origin, size});
            position += lengths[i] + gapAfter(children, i);
        }
    }

private:
    double length(const QSizeF& size) const { return m_vertical ? size.height() : size.width(); }
    double breadth(const QSizeF& size) const { return m_vertical ? size.width() : size.height(); }

    QSizeF sizeOf(const Element& child, std::optional<double> length, const Proposal& room) const {
        return child.sizeThatFits(m_vertical ? Proposal{room.width, length}
                                             : Proposal{length, room.height});
    }
    double lengthOf(const Element& child, std::optional<double> length,
                    const Proposal& room) const {
        return this->length(sizeOf(child, length, room));
    }

    double gapAfter(const Children& children, std::size_t i) const {
        if (i + 1 >= children.size()) return 0;
        if (m_spacing) return *m_spacing;
        return children[i].isSpacer() || children[i + 1].isSpacer() ? 0 : defaultSpacing;
    }

    double gaps(const Children& children) const {
        double sum = 0;
        for (std::size_t i = 0; i < children.size(); ++i)
            sum += gapAfter(children, i);
        return sum;
    }

    using Place = std::pair<double, std::size_t>; ///< In the order in which room is given out.

    std::vector<Place> leastFlexibleFirst(const Children& children, const Proposal& room) const {
        std::vector<Place> order;
        for (std::size_t i = 0; i < children.size(); ++i)
            if (!children[i].isSpacer())
                order.emplace_back(
                    lengthOf(children[i], infinity, room) - lengthOf(children[i], 0, room), i);
        std::sort(order.begin(), order.end());
        return order;
    }

    /// How long each child is in that room.
    std::vector<double> divide(const Children& children, const Proposal& room) const {
        const std::optional<double> whole = m_vertical ? room.height : room.width;
        std::vector<double> lengths;
        for (const Element& child : children)
            lengths.push_back(!whole             ? lengthOf(child, std::nullopt, room)
                              : child.isSpacer() ? lengthOf(child, 0, room)
                                                 : 0);
        if (!whole) return lengths;
        double rest =
            *whole - gaps(children) - std::accumulate(lengths.begin(), lengths.end(), 0.0);
        const std::vector<Place> order = leastFlexibleFirst(children, room);
        for (std::size_t n = 0; n < order.size(); ++n) {
            const auto i = order[n].second;
            const double share = std::max(0.0, rest) / static_cast<double>(order.size() - n);
            lengths[i] = lengthOf(children[i], share, room);
            rest -= lengths[i];
        }
        const auto spacers = static_cast<double>(children.size() - order.size());
        for (std::size_t i = 0; i < children.size(); ++i)
            if (children[i].isSpacer()) lengths[i] += std::max(0.0, rest) / spacers;
        return lengths;
    }

    const bool m_vertical;
    const bool m_centered;
    const std::optional<double> m_spacing;
};

/// A column of its own where no stack is around.
class GroupNode : public StackNode {
public:
    explicit GroupNode(const std::vector<View>& views) : StackNode(true, true, {}, views) {}
    bool isGroup() const override { return true; }
};

} // namespace

VStack::VStack(const Options& options, std::initializer_list<View> children)
    : View(makeView<StackNode>(true, options.alignment == HorizontalAlignment::center,
                               options.spacing, children)) {}

HStack::HStack(const Options& options, std::initializer_list<View> children)
    : View(makeView<StackNode>(false, options.alignment == VerticalAlignment::center,
                               options.spacing, children)) {}
Spacer::Spacer() : Spacer({.minLength = defaultSpacing}) {}
Spacer::Spacer(const Options& options) : View(makeView<SpacerNode>(options.minLength)) {}
ForEach::ForEach(const std::vector<View>& views) : View(group(views)) {}
View group(const std::vector<View>& views) { return makeView<GroupNode>(views); }

std::vector<View> flattened(const std::vector<View>& views) {
    std::vector<View> all;
    for (const View& view : views) {
        if (!view.node().isGroup()) {
            all.push_back(view);
            continue;
        }
        const std::vector<View>& children = view.node().children();
        all.insert(all.end(), children.begin(), children.end());
    }
    return all;
}
