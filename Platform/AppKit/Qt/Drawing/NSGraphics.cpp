#include "AppKit/NSGraphics.h"

#include "AppKit/Qt/Drawing/NSGraphicsContext.h"

void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation) {
    auto* context = NSGraphicsContext::currentContext();
    if (!context) return;
    QPainter& painter = context->painter();
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(rectFrom(rect), context->fill);
    painter.restore();
}
