#pragma once

#include <QPainter>
#include <QString>

#include <string>

/// The file that a symbol is drawn in, whether or not there is one. Its parts, by their names:
/// `ink` is the symbol; `gap`, where there is one, parts the ink from the `slash` across it.
/// `ground` is light and lies under all of that in the symbols for a tray, whose colour nobody
/// knows.
QString symbolFile(const std::string& name);

/// Draws the ink alone, black, and clears the gap. The painter's y axis points up.
void drawSymbolInk(QPainter& painter, const std::string& name, const QRectF& rect);

/// Draws the ink in one colour, on the device's own pixels whatever its scale. The painter's y axis
/// points down.
void drawTintedSymbol(QPainter& painter, const std::string& name, const QRectF& rect,
                      const QColor& color);
