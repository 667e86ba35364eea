// What stands in the platform's own windows.
#pragma once

#include "AppKit/NSGraphics.h"
#include "AppKit/NSViewController.h"

class NSAlert;

/// The program's icon, the alert's two texts and a row of its buttons, as they are when the window
/// is first shown. The alert outlives the controller.
std::shared_ptr<NSViewController> controllerOf(const NSAlert& alert);

/// The standard About panel: the bundle's icon, name and version, and the credits, if there are
/// any.
std::shared_ptr<NSViewController>
aboutController(const std::shared_ptr<NSAttributedString>& credits);
