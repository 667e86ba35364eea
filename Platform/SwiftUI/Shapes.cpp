#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/Views.h"

#include <cmath>

namespace {

class PaintedWidget : public QWidget {
public:
    using QWidget::QWidget;

    void setPainting(const Painting& painting, const Environment& environment) {
        m_painting = painting;
        m_environment = environment;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        m_painting(painter, rect(), m_environment);
    }

private:
    Painting m_painting;
    Environment m_environment;
};

class PaintedElement : public Element {
public:
    PaintedElement(const Environment& environment, const Painting& painting) {
        take<PaintedWidget>(environment).setPainting(painting, environment);
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        constexpr double ideal = 10; // Where it may choose.
        return {proposal.width.value_or(ideal), proposal.height.value_or(ideal)};
    }
};

} // namespace

View painted(const Painting& painting) { return makeView<PaintedElement>(painting); }

QPainterPath continuousCorners(const QRectF& rect, double radius) {
    constexpr double earlier = 1.28;
    const double room = std::min(rect.width(), rect.height()) / 2;
    radius = std::min(radius, room);
    const double reach = std::min(earlier * radius, room);
    // A cubic curve whose middle lies where the arc's does.
    const double control = (8 * (1 - std::sqrt(0.5)) * radius - reach) / 3;

    QPainterPath path;
    const auto corner = [&](const QPointF& at, const QPointF& from, const QPointF& to) {
        path.lineTo(at + reach * from);
        path.cubicTo(at + control * from, at + control * to, at + reach * to);
    };
    const QPointF left(-1, 0);
    const QPointF right(1, 0);
    const QPointF up(0, -1);
    const QPointF down(0, 1);
    path.moveTo(rect.topLeft() + reach * right);
    corner(rect.topRight(), left, down);
    corner(rect.bottomRight(), up, left);
    corner(rect.bottomLeft(), right, up);
    corner(rect.topLeft(), down, right);
    path.closeSubpath();
    return path;
}

View Shape::fill(const Color& color) const {
    return painted([radius = m_cornerRadius, color](QPainter& painter, const QRectF& rect,
                                                    const Environment& environment) {
        painter.fillPath(continuousCorners(rect, radius), colorOf(color, environment));
    });
}

Divider::Divider()
    : View(painted([](QPainter& painter, const QRectF& rect, const Environment& environment) {
               painter.fillRect(rect, faintText(environment.palette, 0.12));
           }).frame({.height = 1})) {}
