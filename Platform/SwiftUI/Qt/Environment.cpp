#include "SwiftUI/Qt/Element.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

namespace {

/// Enough to read small print by on any window.
constexpr double secondaryOpacity = 0.66;

QColor named(Color::Name name, const Environment& environment) {
    const bool dark = isDark(environment.palette);
    if (name == Color::Name::secondary) return faintText(environment.palette, secondaryOpacity);
    if (name == Color::Name::red) return dark ? QColor(255, 105, 97) : QColor(200, 20, 30);
    return dark ? QColor(255, 75, 115) : QColor(235, 40, 85);
}

} // namespace

QFont fontOf(const Environment& environment) {
    QFont font = environment.systemFont;
    font.setPixelSize(qRound(environment.font.size()));
    font.setWeight(static_cast<QFont::Weight>(environment.font.weight()));
    if (environment.tracking != 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, environment.tracking);
    return font;
}

QColor foregroundOf(const Environment& environment) {
    if (!environment.foregroundStyle) return environment.primary;
    const auto* const color = std::get_if<Color>(&*environment.foregroundStyle);
    return color ? colorOf(*color, environment) : thinned(environment.primary, secondaryOpacity);
}

QColor tintOf(const Environment& environment) {
    return environment.tint ? colorOf(*environment.tint, environment)
                            : environment.palette.color(QPalette::Highlight);
}

QColor colorOf(const Color& color, const Environment& environment) {
    if (const auto* const name = std::get_if<Color::Name>(&color.base()))
        return thinned(named(*name, environment), color.opacity());
    const auto& components = std::get<Color::Components>(color.base());
    return QColor::fromRgbF(
        static_cast<float>(components.red), static_cast<float>(components.green),
        static_cast<float>(components.blue), static_cast<float>(color.opacity()));
}
