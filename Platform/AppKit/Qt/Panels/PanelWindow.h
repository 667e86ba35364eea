#pragma once

#include "AppKit/Qt/Windows/NativeWindow.h"

/// A panel on the screen. One that its owner has dropped leaves, and lives until the event at hand
/// is done.
std::shared_ptr<NativeWindow> makePanelWindow(NSWindow& window);

/// A compositor has come or gone: every panel takes on the form that suits.
void renewPanels();
/// The last open menu of the program's has closed.
void tellPanelsOfClosedMenu();
