#include "AppKit/NSEvent.h"

#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Application/CurrentEvent.h"
#include "AppKit/Qt/Windows/Coordinates.h"

#include <QCursor>

namespace {
std::optional<NSPoint> theMouseLocation; ///< Of the event that is being handled.
}

CurrentEvent::CurrentEvent(const NSEvent& event, std::optional<NSPoint> mouseLocation)
    : m_previous(std::exchange(NSApp->m_currentEvent, event)),
      m_previousLocation(std::exchange(theMouseLocation, mouseLocation)) {}

CurrentEvent::~CurrentEvent() {
    NSApp->m_currentEvent = m_previous;
    theMouseLocation = m_previousLocation;
}

NSPoint NSEvent::mouseLocation() {
    return theMouseLocation ? *theMouseLocation : pointFrom(QCursor::pos());
}
