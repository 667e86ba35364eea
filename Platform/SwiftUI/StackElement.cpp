#include "SwiftUI/LayoutElements+Private.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace {

constexpr double defaultSpacing = 8;
constexpr double infinity = std::numeric_limits<double>::infinity();

class SpacerElement : public Element {
public:
    explicit SpacerElement(double minLength) : m_minLength(minLength) {}

    bool isSpacer() const override { return true; }
    void place(const QRectF&) override {}

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return {std::max(m_minLength, proposal.width.value_or(0)),
                std::max(m_minLength, proposal.height.value_or(0))};
    }

private:
    const double m_minLength;
};

/// Lengths run along the stack, breadths across it.
class StackElement : public Element {
public:
    StackElement(bool vertical, double alignment, std::optional<double> spacing,
                 std::vector<ElementPointer> children)
        : m_vertical(vertical), m_alignment(alignment), m_spacing(spacing),
          m_children(std::move(children)) {}

    void place(const QRectF& rect) override {
        const Proposal room = Proposal::of(rect.size());
        const std::vector<double> lengths = divide(room);
        double position = m_vertical ? rect.top() : rect.left();
        for (std::size_t i = 0; i < m_children.size(); ++i) {
            const QSizeF size = childSize(i, lengths[i], room);
            const double across = m_alignment * (breadth(rect.size()) - breadth(size));
            const QPointF origin = m_vertical ? QPointF(rect.left() + across, position)
                                              : QPointF(position, rect.top() + across);
            m_children[i]->place({origin, size});
            position += lengths[i] + gapAfter(i);
        }
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const std::vector<double> lengths = divide(proposal);
        double length = gaps();
        double broadest = 0;
        for (std::size_t i = 0; i < m_children.size(); ++i) {
            length += lengths[i];
            if (!m_children[i]->isSpacer())
                broadest = std::max(broadest, breadth(childSize(i, lengths[i], proposal)));
        }
        return m_vertical ? QSizeF(broadest, length) : QSizeF(length, broadest);
    }

private:
    double length(const QSizeF& size) const { return m_vertical ? size.height() : size.width(); }
    double breadth(const QSizeF& size) const { return m_vertical ? size.width() : size.height(); }

    QSizeF childSize(std::size_t i, std::optional<double> length, const Proposal& room) const {
        return m_children[i]->sizeThatFits(m_vertical ? Proposal{room.width, length}
                                                      : Proposal{length, room.height});
    }

    double gapAfter(std::size_t i) const {
        if (i + 1 >= m_children.size()) return 0;
        if (m_spacing) return *m_spacing;
        return m_children[i]->isSpacer() || m_children[i + 1]->isSpacer() ? 0 : defaultSpacing;
    }

    double gaps() const {
        double sum = 0;
        for (std::size_t i = 0; i < m_children.size(); ++i)
            sum += gapAfter(i);
        return sum;
    }

    /// The child's place in the order in which room is given out.
    double flexibility(std::size_t i, const Proposal& room) const {
        return length(childSize(i, infinity, room)) - length(childSize(i, 0, room));
    }

    std::vector<std::size_t> leastFlexibleFirst(const Proposal& room) const {
        std::vector<std::pair<double, std::size_t>> keyed;
        for (std::size_t i = 0; i < m_children.size(); ++i)
            if (!m_children[i]->isSpacer()) keyed.emplace_back(flexibility(i, room), i);
        std::sort(keyed.begin(), keyed.end());
        std::vector<std::size_t> order;
        for (const auto& [key, i] : keyed)
            order.push_back(i);
        return order;
    }

    /// How long each child is in that room.
    std::vector<double> divide(const Proposal& room) const {
        const std::optional<double> whole = m_vertical ? room.height : room.width;
        std::vector<double> lengths(m_children.size());
        if (!whole) {
            for (std::size_t i = 0; i < m_children.size(); ++i)
                lengths[i] = length(childSize(i, std::nullopt, room));
            return lengths;
        }
        double rest = *whole - gaps();
        std::size_t spacers = 0;
        for (std::size_t i = 0; i < m_children.size(); ++i) {
            if (!m_children[i]->isSpacer()) continue;
            lengths[i] = length(childSize(i, 0, room));
            rest -= lengths[i];
            ++spacers;
        }
        const std::vector<std::size_t> order = leastFlexibleFirst(room);
        for (std::size_t n = 0; n < order.size(); ++n) {
            const double share = std::max(0.0, rest) / static_cast<double>(order.size() - n);
            lengths[order[n]] = length(childSize(order[n], share, room));
            rest -= lengths[order[n]];
        }
        for (std::size_t i = 0; i < m_children.size(); ++i)
            if (m_children[i]->isSpacer())
                lengths[i] += std::max(0.0, rest) / static_cast<double>(spacers);
        return lengths;
    }

    const bool m_vertical;
    const double m_alignment;
    const std::optional<double> m_spacing;
    const std::vector<ElementPointer> m_children;
};

} // namespace

ElementPointer makeStack(bool vertical, double alignment, std::optional<double> spacing,
                         std::vector<ElementPointer> children) {
    return std::make_unique<StackElement>(vertical, alignment, spacing, std::move(children));
}

ElementPointer makeSpacer(const SpacerNode& spacer) {
    return std::make_unique<SpacerElement>(spacer.minLength.value_or(defaultSpacing));
}
