#include "AppKit/NSMenu.h"

#include "AppKit/Qt/Menus/MenuPopup.h"
#include "AppKit/Qt/Windows/Coordinates.h"

void NSMenu::popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent&, NSView&) {
    if (menu) openMenuAt(menu, rectOf({NSEvent::mouseLocation(), {}}).topLeft());
}
