#include "AppKit/NSMenu.h"

#include "AppKit/Qt/Menus/MenuPopup.h"
#include "AppKit/Qt/Windows/Coordinates.h"

void NSMenu::popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent&, NSView&) {
    if (menu) MenuPopup(menu).openAt(rectOf({NSEvent::mouseLocation(), {}}).topLeft());
}
