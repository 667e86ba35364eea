#include "SettingsWindow.h"

#include "NoDestructor.h"
#include "SettingsWindowController.h"

namespace {
NoDestructor<std::shared_ptr<SettingsWindowController>> theController; ///< None before `show`.
} // namespace

void SettingsWindow::show() {
    auto& controller = *theController;
    if (!controller) controller = std::make_shared<SettingsWindowController>();
    NSApp->activateIgnoringOtherApps(true);
    controller->showWindow(nullptr);
    controller->window()->makeKeyAndOrderFront(nullptr);
}
