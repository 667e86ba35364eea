#include "SwiftUI/Views.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "SwiftUI/Qt/Element.h"

namespace {

constexpr double inset = 10; ///< Of what stands within a section.

View atLeading(double spacing, std::initializer_list<View> views) {
    return VStack({.alignment = HorizontalAlignment::leading, .spacing = spacing}, views);
}

View fillingWidth(const View& view) {
    return view.frame(
        {.maxWidth = std::numeric_limits<double>::infinity(), .alignment = Alignment::leading});
}

/// The ground of a section, a little apart from the window.
View card() {
    return painted([](QPainter& painter, const QRectF& rect, const Environment& environment) {
        constexpr double radius = 10;
        painter.setPen(faintText(environment.palette, 0.09));
        painter.setBrush(QColor(255, 255, 255, isDark(environment.palette) ? 12 : 200));
        painter.drawPath(continuousCorners(rect.adjusted(0.5, 0.5, -0.5, -0.5), radius));
    });
}

View parted(const std::vector<View>& rows) {
    std::vector<View> lines;
    for (const View& row : rows) {
        if (!lines.empty()) lines.push_back(Divider().padding(Edge::Set::horizontal, inset));
        lines.push_back(fillingWidth(row).padding(inset));
    }
    return atLeading(0, {group(lines)});
}

View footer(const std::optional<View>& text) {
    if (!text) return group({});
    return text->font(Font::caption)
        .foregroundStyle(HierarchicalShapeStyle::secondary)
        .padding(Edge::Set::horizontal, inset);
}

} // namespace

Form::Form(std::initializer_list<View> sections)
    : View(ScrollView(fillingWidth(atLeading(20, sections)).padding(20))) {}

Section::Section(const Options& options, std::initializer_list<View> rows)
    : View(atLeading(
          6, {Text(options.header).font(Font::headline).padding(Edge::Set::horizontal, inset),
              parted(rows).background(card()), footer(options.footer)})) {}
