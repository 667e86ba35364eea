#pragma once

#include "AppKit/NSImage.h"

#include <QIcon>
#include <QImage>

/// The symbol as a square picture of so many pixels each way, as trays show it; a template in the
/// colour, others black.
QImage pictureOf(const NSImage& image, int side, const QColor& ink);

/// By which the desktop's own icons have the symbol and colour it themselves, where the program is
/// installed; else empty.
QString themeNameOf(const NSImage& image);

/// A symbol drawn anew for each size in the colour of the painter's pen.
QIcon inkIconFrom(const NSImage& image);
