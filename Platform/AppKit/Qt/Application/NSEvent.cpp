#include "AppKit/NSEvent.h"

#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Windows/Coordinates.h"

#include <QCursor>

NSPoint NSEvent::mouseLocation() {
    if (const auto& location = CurrentEvent::mouseLocation()) return *location;
    return pointFrom(QCursor::pos());
}
