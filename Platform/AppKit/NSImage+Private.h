#pragma once

#include "AppKit/NSImage.h"

#include <QIcon>

/// The image as an icon that is drawn anew for each size it is asked for. A template takes the
/// colour of the application's text.
QIcon iconFrom(const NSImage& image);

/// A symbol without ground, drawn anew for each size in the colour of the painter's pen; as a
/// picture of its own, in that of the application's text.
QIcon inkIconFrom(const NSImage& image);
