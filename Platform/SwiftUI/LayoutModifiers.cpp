#include "SwiftUI/Qt/Element.h"

#include <QMarginsF>

namespace {

/// Measures and places its content, or what stands in front of others, in a way of its own.
class LaidOut : public Element {
public:
    using Measure = std::function<QSizeF(const Element& content, const Proposal&)>;
    using Place = std::function<void(const Element& content, const QRectF&)>;

    LaidOut(const Environment& environment, const View& content, Measure measure, Place place)
        : Element(content, environment), m_measure(std::move(measure)), m_place(std::move(place)) {}

    void place(const QRectF& rect) const override { m_place(*parts().back(), rect); }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        return m_measure(*parts().back(), proposal);
    }

private:
    const Measure m_measure;
    const Place m_place;
};

/// Gives the content what room it takes of the rectangle; leading is the left, halfway down.
LaidOut::Place aligned(Alignment alignment) {
    return [alignment](const Element& content, const QRectF& rect) {
        const QSizeF size = content.sizeThatFits(Proposal::of(rect.size()));
        const double shareAtLeft = alignment == Alignment::leading ? 0 : 0.5;
        content.place({{rect.left() + shareAtLeft * (rect.width() - size.width()),
                        rect.top() + 0.5 * (rect.height() - size.height())},
                       size});
    };
}

/// One upon the other, as large as the content.
class BackgroundElement : public Element {
public:
    BackgroundElement(const Environment& environment, const View& content, const View& background)
        : Element(background, environment) {
        add(content, environment);
    }

    void place(const QRectF& rect) const override {
        aligned(Alignment::center)(*parts().front(), rect);
        parts().back()->place(rect);
    }
};

} // namespace

View View::padding(Edge::Set edges, double length) const {
    const double across = edges == Edge::Set::vertical ? 0 : length;
    const double down = edges == Edge::Set::horizontal ? 0 : length;
    const auto measure = [across, down](const Element& content, const Proposal& proposal) {
        const auto less = [](std::optional<double> room, double margin) {
            if (room) room = std::max(0.0, *room - 2 * margin);
            return room;
        };
        return content.sizeThatFits({less(proposal.width, across), less(proposal.height, down)}) +
               QSizeF(2 * across, 2 * down);
    };
    return makeView<LaidOut>(*this, measure,
                             [across, down](const Element& content, const QRectF& rect) {
                                 content.place(rect - QMarginsF(across, down, across, down));
                             });
}

View View::frame(const FixedFrame& frame) const {
    const auto measure = [frame](const Element& content, const Proposal& proposal) {
        const auto either = [](auto first, auto second) { return first ? first : second; };
        const QSizeF size = content.sizeThatFits(
            {either(frame.width, proposal.width), either(frame.height, proposal.height)});
        return QSizeF(frame.width.value_or(size.width()), frame.height.value_or(size.height()));
    };
    return makeView<LaidOut>(*this, measure, aligned(frame.alignment));
}

View View::frame(const FlexibleFrame& frame) const {
    const auto measure = [frame](const Element& content, const Proposal& proposal) {
        std::optional<double> width = proposal.width;
        if (width) width = std::min(*width, frame.maxWidth);
        const QSizeF size = content.sizeThatFits({width, proposal.height});
        return QSizeF(std::max(size.width(), width.value_or(0)), size.height());
    };
    return makeView<LaidOut>(*this, measure, aligned(frame.alignment));
}

View View::fixedSize(const FixedAxes& axes) const {
    const auto measure = [axes](const Element& content, const Proposal& proposal) {
        return content.sizeThatFits({axes.horizontal ? std::nullopt : proposal.width,
                                     axes.vertical ? std::nullopt : proposal.height});
    };
    return makeView<LaidOut>(*this, measure, &Element::place);
}

View View::background(const View& background) const {
    return makeView<BackgroundElement>(*this, background);
}
