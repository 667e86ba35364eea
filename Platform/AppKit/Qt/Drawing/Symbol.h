#pragma once

#include "AppKit/NSImage.h"

#include <QIcon>
#include <QPainter>

/// The file that a symbol is drawn in, whether or not there is one. Its parts, by their names:
/// `ink` is the symbol; `gap`, where there is one, parts the ink from the `slash` across it.
QString symbolFile(const std::string& name);

/// How wide a symbol's strokes are.
enum class SymbolWeight { semibold, bold };

/// Draws the ink alone, black, and clears the gap. The y axis points down, here and below.
void drawSymbolInk(QPainter& painter, const std::string& name, const QRectF& rect,
                   SymbolWeight weight = SymbolWeight::semibold);

/// Draws on a layer that has the pixels of what lies below, whatever its scale: nothing is blurred.
/// `draw` says whether there is anything to show.
void drawOnOwnPixels(QPainter& target, const QRectF& rect,
                     const std::function<bool(QPainter&)>& draw);

/// Draws the ink in one colour, on its own pixels.
void drawTintedSymbol(QPainter& painter, const std::string& name, const QRectF& rect,
                      const QColor& color, SymbolWeight weight = SymbolWeight::semibold);

/// The symbol as trays show it, so many pixels each way; a template in the ink, others black.
QImage pictureOf(const NSImage& image, int side, const QColor& ink);

/// The symbol's name among the desktop's icons. Empty where the program is not installed.
QString themeNameOf(const NSImage& image);

/// A symbol drawn anew for each size in the colour of the painter's pen.
QIcon inkIconFrom(const NSImage& image);
