#pragma once

#include "AppKit/NSImage.h"

#include <QIcon>
#include <QPainter>

/// What `NSColor`, `NSBezierPath` and `NSImage` draw with. Its coordinates are the view's, its pen
/// and its brush the colours that were set. Null where nothing is being drawn.
extern QPainter* thePainter;

/// How wide a symbol's strokes are.
enum class SymbolWeight { semibold, bold };

/// Draws the symbol in an opaque colour. The y axis points down.
void drawSymbol(QPainter& painter, const std::string& name, const QRectF& rect, const QColor& color,
                SymbolWeight weight = SymbolWeight::semibold);

/// The one by which the program is known.
QIcon programIcon();

/// The symbol as trays show it, so many pixels each way; a template in the ink, others black.
QImage pictureOf(const NSImage& image, int side, const QColor& ink);

/// The symbol's name among the desktop's icons. Empty where the program is not installed.
QString themeNameOf(const NSImage& image);

/// A symbol drawn anew for each size in the colour of the painter's pen.
QIcon inkIconFrom(const NSImage& image);
