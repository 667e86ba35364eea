#include "AppKit/NSColor.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Drawing/NSGraphicsContext.h"

#include <QGuiApplication>

namespace {

// Contrasts of 5.9 to 1 and 7.6 to 1 with the windows' own light and dark.
constexpr ::CGColor darkSecondary = {0, 0, 0, 0.6};
constexpr ::CGColor lightSecondary = {1, 1, 1, 0.6};

} // namespace

::CGColor NSColor::CGColor() const {
    if (!m_secondaryLabel) return m_color;
    return isDark(QGuiApplication::palette()) ? lightSecondary : darkSecondary;
}

void NSColor::setFill() const {
    if (auto* context = NSGraphicsContext::currentContext()) context->fill = colorFrom(CGColor());
}

void NSColor::setStroke() const {
    if (auto* context = NSGraphicsContext::currentContext()) context->stroke = colorFrom(CGColor());
}

void NSColor::set() const {
    setFill();
    setStroke();
}
