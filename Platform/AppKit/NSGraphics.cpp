#include "AppKit/NSGraphics.h"

#include "AppKit/NSGraphicsContext+Private.h"

void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation) {
    auto* context = NSGraphicsContext::currentContext();
    if (!context) return;
    QPainter& painter = context->painter();
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(QRectF(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height),
                     context->fill);
    painter.restore();
}
