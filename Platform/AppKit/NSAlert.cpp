#include "AppKit/NSAlert.h"

#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Contents/AlertController.h"

NSAlert::NSAlert()
    : m_controller(std::make_shared<AlertController>()),
      m_window(NSWindow::windowWithContentViewController(m_controller)) {
    m_window->setStyleMask(NSWindowStyleMaskTitled);
}

NSAlert::~NSAlert() = default;

const std::string& NSAlert::messageText() const { return m_controller->messageText; }

void NSAlert::setMessageText(const std::string& text) { m_controller->messageText = text; }

const std::string& NSAlert::informativeText() const { return m_controller->informativeText; }

void NSAlert::setInformativeText(const std::string& text) { m_controller->informativeText = text; }

void NSAlert::addButtonWithTitle(const std::string& title) {
    m_controller->buttons.push_back(title);
}

NSModalResponse NSAlert::runModal() { return NSApp->runModalForWindow(*m_window); }
