#include "SettingsWindow.h"

#include "SettingsWindowController.h"

namespace {
// None before the first `show`. Kept until the process ends, so never destroyed.
auto& controller = *new std::shared_ptr<SettingsWindowController>;
} // namespace

void SettingsWindow::show() {
    if (!controller) controller = std::make_shared<SettingsWindowController>();
    NSApp->activateIgnoringOtherApps(true);
    controller->showWindow(nullptr);
    controller->window()->makeKeyAndOrderFront(nullptr);
}
