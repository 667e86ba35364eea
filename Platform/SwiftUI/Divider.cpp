#include "SwiftUI/Stacks.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "SwiftUI/Qt/Painted.h"

Divider::Divider()
    : View(painted(
          [](QPainter& painter, const QRectF& rect, const Environment& environment) {
              painter.fillRect(rect, faintText(environment.palette, 0.12));
          },
          1)) {}
