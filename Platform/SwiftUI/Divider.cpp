#include "SwiftUI/Stacks.h"

#include "SwiftUI/Qt/Painted.h"

#include <QPainter>

Divider::Divider()
    : View(painted(
          [](QPainter& painter, const QRectF& rect, const Environment& environment) {
              painter.fillRect(rect, faintText(environment.palette, 0.12));
          },
          1)) {}
