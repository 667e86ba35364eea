#include "SwiftUI/LayoutElements+Private.h"

#include <algorithm>

namespace {

double shareBefore(Alignment alignment) { return alignment == Alignment::leading ? 0 : 0.5; }

/// Gives the content what room it takes of the rectangle; leading is the left, halfway down.
void placeWithin(const QRectF& rect, double shareAtLeft, Element& content) {
    const QSizeF size = content.sizeThatFits(Proposal::of(rect.size()));
    content.place({{rect.left() + shareAtLeft * (rect.width() - size.width()),
                    rect.top() + 0.5 * (rect.height() - size.height())},
                   size});
}

class PaddingElement : public Element {
public:
    PaddingElement(const QMarginsF& margins, ElementPointer content)
        : m_margins(margins), m_content(std::move(content)) {}

    void place(const QRectF& rect) override { m_content->place(rect - m_margins); }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const auto less = [](std::optional<double> length, double margins) {
            if (length) length = std::max(0.0, *length - margins);
            return length;
        };
        const double across = m_margins.left() + m_margins.right();
        const double down = m_margins.top() + m_margins.bottom();
        return m_content->sizeThatFits(
                   {less(proposal.width, across), less(proposal.height, down)}) +
               QSizeF(across, down);
    }

private:
    const QMarginsF m_margins;
    const ElementPointer m_content;
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
    FrameElement(const Frame& frame, ElementPointer content)
        : m_frame(frame), m_content(std::move(content)) {}

    void place(const QRectF& rect) override {
        placeWithin(rect, shareBefore(m_frame.alignment), *m_content);
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return sizeOf(m_frame, *m_content, proposal);
    }

private:
    const Frame m_frame;
    const ElementPointer m_content;
};

class FixedSizeElement : public Element {
public:
    FixedSizeElement(const View::FixedAxes& axes, ElementPointer content)
        : m_axes(axes), m_content(std::move(content)) {}

    void place(const QRectF& rect) override { m_content->place(rect); }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return m_content->sizeThatFits({m_axes.horizontal ? std::nullopt : proposal.width,
                                        m_axes.vertical ? std::nullopt : proposal.height});
    }

private:
    const View::FixedAxes m_axes;
    const ElementPointer m_content;
};

class BackgroundElement : public Element {
public:
    BackgroundElement(ElementPointer background, ElementPointer content)
        : m_background(std::move(background)), m_content(std::move(content)) {}

    void place(const QRectF& rect) override {
        placeWithin(rect, 0.5, *m_background);
        m_content->place(rect);
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return m_content->sizeThatFits(proposal);
    }

private:
    const ElementPointer m_background;
    const ElementPointer m_content;
};

} // namespace

ElementPointer makePadding(const QMarginsF& margins, ElementPointer content) {
    return std::make_unique<PaddingElement>(margins, std::move(content));
}

ElementPointer makeFrame(const View::FixedFrame& frame, ElementPointer content) {
    return std::make_unique<FrameElement<View::FixedFrame>>(frame, std::move(content));
}

ElementPointer makeFrame(const View::FlexibleFrame& frame, ElementPointer content) {
    return std::make_unique<FrameElement<View::FlexibleFrame>>(frame, std::move(content));
}

ElementPointer makeFixedSize(const View::FixedAxes& axes, ElementPointer content) {
    return std::make_unique<FixedSizeElement>(axes, std::move(content));
}

ElementPointer makeBackground(ElementPointer background, ElementPointer content) {
    return std::make_unique<BackgroundElement>(std::move(background), std::move(content));
}
