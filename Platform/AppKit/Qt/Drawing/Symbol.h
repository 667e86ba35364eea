#pragma once

#include <QPainter>
#include <QString>

#include <string>

/// The file that a symbol is drawn in, whether or not there is one. Its parts, by their names:
/// `ink` is the symbol; `gap`, where there is one, parts the ink from the `slash` across it.
QString symbolFile(const std::string& name);

/// A status item's symbol, as the desktop's icons name it, and its drawing for a square of so many
/// pixels each way: small ones are drawn for themselves.
QString traySymbolName(const std::string& name);
QString traySymbolFile(const std::string& name, int side);

/// How wide a symbol's strokes are.
enum class SymbolWeight { semibold, bold };

/// Draws the ink alone, black, and clears the gap. The painter's y axis points up.
void drawSymbolInk(QPainter& painter, const std::string& name, const QRectF& rect,
                   SymbolWeight weight = SymbolWeight::semibold);

/// Draws the ink in one colour, on the device's own pixels whatever its scale. The painter's y axis
/// points down.
void drawTintedSymbol(QPainter& painter, const std::string& name, const QRectF& rect,
                      const QColor& color, SymbolWeight weight = SymbolWeight::semibold);
