// Elements that stand on the screen as widgets with others in them.
#pragma once

#include "SwiftUI/WidgetElements+Private.h"

class ButtonWidget;

/// `accessibleName` is what the button reads as.
ButtonWidget& takeButton(const ButtonNode& button, const std::string& accessibleName,
                         const Environment& environment, const WidgetPlace& place);
/// What the label of such a button takes over.
Environment labelEnvironment(const Environment& environment);
ElementPointer makeButton(ButtonWidget& widget, const Environment& environment,
                          ElementPointer label);

/// The widget that a scrolled content stands in.
class ScrollWidget;
ScrollWidget& takeScroll(const Environment& environment, const WidgetPlace& place);
QWidget& contentOf(ScrollWidget& scroll);
ElementPointer makeScroll(ScrollWidget& scroll, ElementPointer content);

/// The widget around what is one element to assistive technology.
QWidget& takeGroup(const Environment& environment, const WidgetPlace& place);
ElementPointer makeGroup(QWidget& group, ElementPointer content);
