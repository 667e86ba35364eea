#include "SwiftUI/Qt/ViewNode.h"

#include <QMarginsF>

namespace {

double shareBefore(Alignment alignment) { return alignment == Alignment::leading ? 0 : 0.5; }

/// Gives the content what room it takes of the rectangle; leading is the left, halfway down.
void placeWithin(const QRectF& rect, double shareAtLeft, const Element& content) {
    const QSizeF size = content.sizeThatFits(Proposal::of(rect.size()));
    content.place({{rect.left() + shareAtLeft * (rect.width() - size.width()),
                    rect.top() + 0.5 * (rect.height() - size.height())},
                   size});
}

class PaddingNode : public ViewNode {
public:
    PaddingNode(const View& content, const QMarginsF& margins)
        : ViewNode({content}), m_margins(margins) {}

    QSizeF measure(const Element& element, const Proposal& proposal) const override {
        const auto less = [](std::optional<double> length, double margins) {
            if (length) length = std::max(0.0, *length - margins);
            return length;
        };
        const double across = m_margins.left() + m_margins.right();
        const double down = m_margins.top() + m_margins.bottom();
        return ViewNode::measure(element,
                                 {less(proposal.width, across), less(proposal.height, down)}) +
               QSizeF(across, down);
    }

    void place(const Element& element, const QRectF& rect) const override {
        ViewNode::place(element, rect - m_margins);
    }

private:
    const QMarginsF m_margins;
};

QSizeF sizeOf(const View::FixedFrame& frame, const Element& content, const Proposal& proposal) {
    const auto either = [](auto first, auto second) { return first ? first : second; };
    const QSizeF size = content.sizeThatFits(
        {either(frame.width, proposal.width), either(frame.height, proposal.height)});
    return {frame.width.value_or(size.width()), frame.height.value_or(size.height())};
}

QSizeF sizeOf(const View::FlexibleFrame& frame, const Element& content, const Proposal& proposal) {
    std::optional<double> width = proposal.width;
    if (width) width = std::min(*width, frame.maxWidth);
    const QSizeF size = content.sizeThatFits({width, proposal.height});
    return {std::max(size.width(), width.value_or(0)), size.height()};
}

template <class Frame> class FrameNode : public ViewNode {
public:
    FrameNode(const View& content, const Frame& frame) : ViewNode({content}), m_frame(frame) {}

    QSizeF measure(const Element& element, const Proposal& proposal) const override {
        return sizeOf(m_frame, element.parts().front(), proposal);
    }

    void place(const Element& element, const QRectF& rect) const override {
        placeWithin(rect, shareBefore(m_frame.alignment), element.parts().front());
    }

private:
    const Frame m_frame;
};

class FixedSizeNode : public ViewNode {
public:
    FixedSizeNode(const View& content, const View::FixedAxes& axes)
        : ViewNode({content}), m_axes(axes) {}

    QSizeF measure(const Element& element, const Proposal& proposal) const override {
        return ViewNode::measure(element, {m_axes.horizontal ? std::nullopt : proposal.width,
                                           m_axes.vertical ? std::nullopt : proposal.height});
    }

private:
    const View::FixedAxes m_axes;
};

class BackgroundNode : public ViewNode {
public:
    BackgroundNode(const View& content, const View& background) : ViewNode({background, content}) {}

    void place(const Element& element, const QRectF& rect) const override {
        placeWithin(rect, 0.5, element.parts().front());
        element.parts().back().place(rect);
    }
};

} // namespace

View View::padding(Edge::Set edges, double length) const {
    const double across = edges == Edge::Set::vertical ? 0 : length;
    const double down = edges == Edge::Set::horizontal ? 0 : length;
    return makeView<PaddingNode>(*this, QMarginsF(across, down, across, down));
}

View View::frame(const FixedFrame& frame) const {
    return makeView<FrameNode<FixedFrame>>(*this, frame);
}

View View::frame(const FlexibleFrame& frame) const {
    return makeView<FrameNode<FlexibleFrame>>(*this, frame);
}

View View::fixedSize(const FixedAxes& axes) const { return makeView<FixedSizeNode>(*this, axes); }

View View::background(const View& background) const {
    return makeView<BackgroundNode>(*this, background);
}
