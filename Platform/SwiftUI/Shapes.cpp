#include "SwiftUI/Shapes.h"

#include "SwiftUI/Qt/Painted.h"

#include <QPainter>

View Shape::fill(const Color& color) const {
    return painted([radius = m_cornerRadius, color](QPainter& painter, const QRectF& rect,
                                                    const Environment& environment) {
        painter.fillPath(continuousCorners(rect, radius), colorOf(color, environment));
    });
}
