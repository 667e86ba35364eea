#include "AppKit/NSColor.h"

#include "AppKit/NSGraphicsContext+Private.h"

namespace {

QColor colorFrom(const CGColor& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

} // namespace

void NSColor::setFill() const {
    if (auto* context = NSGraphicsContext::currentContext()) context->fill = colorFrom(m_color);
}

void NSColor::setStroke() const {
    if (auto* context = NSGraphicsContext::currentContext()) context->stroke = colorFrom(m_color);
}

void NSColor::set() const {
    setFill();
    setStroke();
}
