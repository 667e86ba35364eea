#include "SettingsWindow.h"

#include "SettingsWindowController.h"

namespace {
std::shared_ptr<SettingsWindowController> controller; ///< None before the first `show`.
}

void SettingsWindow::show() {
    if (!controller) controller = std::make_shared<SettingsWindowController>();
    NSApp->activateIgnoringOtherApps(true);
    controller->showWindow(nullptr);
    controller->window()->makeKeyAndOrderFront(nullptr);
}
