#pragma once

#include "AppKit/NSMenu.h"

#include <QKeyEvent>
#include <QString>

/// The keys that stand for the item, as they are shown in its row: "⌃⌥⌘N". Empty where it has none.
QString keyEquivalentText(const NSMenuItem& item);

/// Whether the press is that of the item's keys. Command is the Super key, and Option is Alt.
bool isKeyEquivalent(const NSMenuItem& item, const QKeyEvent& press);
