#include "SwiftUI/ContinuousCorners+Private.h"
#include "SwiftUI/WidgetElement+Private.h"
#include "SwiftUI/WidgetElements+Private.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// What a view that fills its room has where it may choose.
constexpr double idealLength = 10;
constexpr double cardRadius = 10;

/// A widget that is nothing but what is painted into it.
class PaintedWidget : public QWidget {
public:
    using QWidget::QWidget;
    using Painting = std::function<void(QPainter&, const QRectF&)>;

    void setPainting(Painting painting) {
        m_painting = std::move(painting);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        m_painting(painter, rect());
    }

private:
    Painting m_painting;
};

QSizeF fillRoom(const Proposal& proposal) {
    return {proposal.width.value_or(idealLength), proposal.height.value_or(idealLength)};
}

template <class Measure>
ElementPointer makePainted(const WidgetPlace& place, PaintedWidget::Painting painting,
                           Measure measure) {
    auto& widget = place.take<PaintedWidget>();
    widget.setPainting(std::move(painting));
    return std::make_unique<WidgetElement<Measure>>(widget, measure);
}

double radiusOf(const Shape& shape, const QRectF& rect) {
    switch (shape.kind()) {
    case Shape::Kind::rectangle:
        return 0;
    case Shape::Kind::roundedRectangle:
        return shape.cornerRadius();
    case Shape::Kind::capsule:
        return std::min(rect.width(), rect.height()) / 2;
    }
    return 0;
}

} // namespace

ElementPointer makeDivider(const Environment& environment, const WidgetPlace& place) {
    const QColor color = faintText(environment.palette, 0.12);
    return makePainted(
        place, [color](QPainter& painter, const QRectF& rect) { painter.fillRect(rect, color); },
        [](const Proposal& proposal) { return QSizeF(fillRoom(proposal).width(), 1); });
}

ElementPointer makeShape(const Shape& shape, const QColor& fill, const WidgetPlace& place) {
    return makePainted(
        place,
        [shape, fill](QPainter& painter, const QRectF& rect) {
            painter.fillPath(continuousCorners(rect, radiusOf(shape, rect)), fill);
        },
        fillRoom);
}

ElementPointer makeCard(const Environment& environment, const WidgetPlace& place) {
    const QColor ground =
        isDark(environment.palette) ? QColor(255, 255, 255, 12) : QColor(255, 255, 255, 200);
    const QColor edge = faintText(environment.palette, 0.09);
    return makePainted(
        place,
        [ground, edge](QPainter& painter, const QRectF& rect) {
            painter.setPen(edge);
            painter.setBrush(ground);
            painter.drawPath(continuousCorners(rect.adjusted(0.5, 0.5, -0.5, -0.5), cardRadius));
        },
        fillRoom);
}
