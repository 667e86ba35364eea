// Elements that stand on the screen as widgets.
#pragma once

#include "SwiftUI/Element+Private.h"
#include "SwiftUI/Environment+Private.h"
#include "SwiftUI/WidgetPool+Private.h"

/// Where the widgets of a part of a tree come from, and the widget that they stand in.
struct WidgetPlace {
    WidgetPool& pool;
    QWidget& parent;

    template <class Widget> Widget& take() const { return pool.take<Widget>(parent); }
    WidgetPlace within(QWidget& widget) const { return {pool, widget}; }
};

ElementPointer makeText(const std::string& text, const Environment& environment,
                        const WidgetPlace& place);
ElementPointer makeSymbol(const std::string& name, const Environment& environment,
                          const WidgetPlace& place);
ElementPointer makeDivider(const Environment& environment, const WidgetPlace& place);
ElementPointer makeShape(const Shape& shape, const QColor& fill, const WidgetPlace& place);
/// The ground of a section of a grouped form, a little apart from the window.
ElementPointer makeCard(const Environment& environment, const WidgetPlace& place);
ElementPointer makeSwitch(const ToggleNode& toggle, const Environment& environment,
                          const WidgetPlace& place);
