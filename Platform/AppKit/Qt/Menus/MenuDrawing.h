// How the program's menus look: rounded, with a hairline around them, the keys of an item at its
// right and the images in a column of their own.
#pragma once

#include <QPainter>
#include <QStyleOptionMenuItem>

// In points.
inline constexpr int menuRim = 5;    ///< Between the menu's edge and its rows.
inline constexpr int menuRadius = 8; ///< Of the corners.

QSize menuRowSize(const QStyleOptionMenuItem& row);
void drawMenuRow(const QStyleOptionMenuItem& row, QPainter& painter);

/// What is behind the rows, with the hairline. Without translucency the corners are cut elsewhere.
void drawMenuPanel(const QStyleOption& panel, QPainter& painter, bool translucent);
