#include "AppKit/NSMenu.h"

#include "AppKit/Coordinates+Private.h"

#include <QMenu>

void NSMenu::popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent&, NSView&) {
    if (!menu) return;
    QMenu native;
    if (native.isEmpty()) return; // There is nothing to open.
    native.exec(rectOf({NSEvent::mouseLocation(), {}}).topLeft());
}
