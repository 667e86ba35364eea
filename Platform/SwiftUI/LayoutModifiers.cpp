#include "SwiftUI/Qt/Element.h"

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

class PaddingElement : public Element {
public:
    PaddingElement(const Environment& environment, const View& content, const QMarginsF& margins)
        : Element(content, environment), m_margins(margins) {}

    void place(const QRectF& rect) const override { Element::place(rect - m_margins); }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const auto less = [](std::optional<double> length, double margins) {
            if (length) length = std::max(0.0, *length - margins);
            return length;
        };
        const double across = m_margins.left() + m_margins.right();
        const double down = m_margins.top() + m_margins.bottom();
        return Element::measure({less(proposal.width, across), less(proposal.height, down)}) +
               QSizeF(across, down);
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

template <class Frame> class FrameElement : public Element {
public:
    FrameElement(const Environment& environment, const View& content, const Frame& frame)
        : Element(content, environment), m_frame(frame) {}

    void place(const QRectF& rect) const override {
        placeWithin(rect, shareBefore(m_frame.alignment), *parts().front());
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return sizeOf(m_frame, *parts().front(), proposal);
    }

private:
    const Frame m_frame;
};

class FixedSizeElement : public Element {
public:
    FixedSizeElement(const Environment& environment, const View& content,
                     const View::FixedAxes& axes)
        : Element(content, environment), m_axes(axes) {}

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return Element::measure({m_axes.horizontal ? std::nullopt : proposal.width,
                                 m_axes.vertical ? std::nullopt : proposal.height});
    }

private:
    const View::FixedAxes m_axes;
};

class BackgroundElement : public Element {
public:
    BackgroundElement(const Environment& environment, const View& content, const View& background)
        : Element(background, environment) {
        add(content, environment);
    }

    void place(const QRectF& rect) const override {
        placeWithin(rect, 0.5, *parts().front());
        parts().back()->place(rect);
    }
};

} // namespace

View View::padding(Edge::Set edges, double length) const {
    const double across = edges == Edge::Set::vertical ? 0 : length;
    const double down = edges == Edge::Set::horizontal ? 0 : length;
    return makeView<PaddingElement>(*this, QMarginsF(across, down, across, down));
}

View View::frame(const FixedFrame& frame) const {
    return makeView<FrameElement<FixedFrame>>(*this, frame);
}

View View::frame(const FlexibleFrame& frame) const {
    return makeView<FrameElement<FlexibleFrame>>(*this, frame);
}

View View::fixedSize(const FixedAxes& axes) const {
    return makeView<FixedSizeElement>(*this, axes);
}

View View::background(const View& background) const {
    return makeView<BackgroundElement>(*this, background);
}
