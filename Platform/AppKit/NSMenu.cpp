#include "AppKit/NSMenu.h"

#include "AppKit/Coordinates+Private.h"
#include "AppKit/MenuPopup+Private.h"

void NSMenu::popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent&, NSView&) {
    if (menu) MenuPopup(menu).openAt(rectOf({NSEvent::mouseLocation(), {}}).topLeft());
}
