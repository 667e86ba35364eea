#include "AppKit/NSStatusBar.h"

#include "AppKit/NSApplication.h"
#include "AppKit/Qt/Menus/MenuPopup.h"
#include "AppKit/Qt/StatusItem/TrayIcon.h"

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

void NSStatusBarButton::performClick(const id&) {
    const auto menu = m_menu; // The delegate may take it away as it closes.
    if (!menu) return sendAction();
    if (close(*menu)) return;
    openMenuBeside(menu, m_icon->place());
}

bool NSStatusBarButton::isMenuOpen() const { return m_menu && isOpen(*m_menu); }

void NSStatusBarButton::sendAction() {
    if (const auto target = m_target.lock()) m_action.send(*target, *this);
}

void NSStatusBarButton::mouseUp(const NSEvent& event) {
    NSApp->handle(event, [&] {
        if (m_menu)
            performClick(nullptr);
        else if (m_actionMask & (1UL << event.type()))
            sendAction();
    });
}
