#include "AppKit/NSEvent.h"

#include "AppKit/Coordinates+Private.h"
#include "AppKit/NSApplication+Private.h"

#include <QCursor>

NSPoint NSEvent::mouseLocation() {
    if (const auto& location = CurrentEvent::mouseLocation()) return *location;
    return pointFrom(QCursor::pos());
}
