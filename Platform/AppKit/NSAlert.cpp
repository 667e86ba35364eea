#include "AppKit/NSAlert.h"

#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Contents/Controllers.h"

NSAlert::NSAlert() : m_window(NSWindow::windowWithContentViewController(controllerOf(*this))) {
    m_window->setStyleMask(NSWindowStyleMaskTitled);
}

NSModalResponse NSAlert::runModal() { return NSApp->runModalForWindow(*m_window); }
