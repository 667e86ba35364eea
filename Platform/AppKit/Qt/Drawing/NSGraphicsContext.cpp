#include "AppKit/Qt/Drawing/NSGraphicsContext.h"

#include <utility>

namespace {
NSGraphicsContext* theContext = nullptr;
}

QColor colorFrom(const CGColor& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QRectF rectFrom(const NSRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

NSGraphicsContext::NSGraphicsContext(QPainter& painter)
    : m_painter(painter), m_outer(std::exchange(theContext, this)) {}

NSGraphicsContext::~NSGraphicsContext() { theContext = m_outer; }

NSGraphicsContext* NSGraphicsContext::currentContext() { return theContext; }
