#include "AppKit/NSStatusBarButton.h"

#include "AppKit/NSApplication+Private.h"
#include "AppKit/TrayIcon+Private.h"

NSStatusBarButton::NSStatusBarButton() : m_icon(std::make_unique<TrayIcon>(*this)) {}

NSStatusBarButton::~NSStatusBarButton() = default;

void NSStatusBarButton::setToolTip(const std::string& toolTip) {
    m_toolTip = toolTip;
    m_icon->update();
}

void NSStatusBarButton::setImage(std::shared_ptr<NSImage> image) {
    m_image = std::move(image);
    m_icon->update();
}

void NSStatusBarButton::sendActionFor(const NSEvent& event) {
    if (!(m_actionMask & (1UL << event.type()))) return;
    const auto target = m_target.lock();
    if (!target) return;
    const CurrentEvent current(event);
    m_action.send(*target);
}
