#include "AppKit/NSMenu.h"

#include "AppKit/Qt/Menus/MenuPopup.h"
#include "AppKit/Qt/Windows/Coordinates.h"

NSMenuItem::NSMenuItem(std::string title, SEL action, std::string keyEquivalent)
    : m_title(std::move(title)), m_action(std::move(action)),
      m_keyEquivalent(std::move(keyEquivalent)) {}

std::shared_ptr<NSMenuItem> NSMenuItem::separatorItem() {
    auto item = std::make_shared<NSMenuItem>("", nullptr, "");
    item->m_separator = true;
    return item;
}

bool NSMenuItem::isEnabled() const {
    if (m_separator) return false;
    return m_submenu || (m_action && !m_target.expired());
}

void NSMenu::popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent&, NSView&) {
    if (menu) openMenuAt(menu, rectOf({NSEvent::mouseLocation(), {}}).topLeft());
}
