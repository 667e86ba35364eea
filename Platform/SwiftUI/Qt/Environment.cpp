#include "SwiftUI/Qt/Environment.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

namespace {

/// Enough to read small print by on any window.
constexpr double secondaryOpacity = 0.66;

QColor thinned(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

QColor named(Color::Name name, const Environment& environment) {
    const bool dark = isDark(environment.palette);
    switch (name) {
    case Color::Name::red:
        return dark ? QColor(255, 105, 97) : QColor(200, 20, 30);
    case Color::Name::pink:
        return dark ? QColor(255, 75, 115) : QColor(235, 40, 85);
    case Color::Name::secondary:
        return faintText(environment.palette, secondaryOpacity);
    }
    return {};
}

QFont::Weight weightOf(Font::Weight weight) {
    switch (weight) {
    case Font::Weight::regular:
        return QFont::Normal;
    case Font::Weight::medium:
        return QFont::Medium;
    case Font::Weight::semibold:
        return QFont::DemiBold;
    case Font::Weight::bold:
        return QFont::Bold;
    }
    return QFont::Normal;
}

} // namespace

QFont fontOf(const Environment& environment) {
    QFont font = environment.systemFont;
    font.setPixelSize(qRound(environment.font.size()));
    font.setWeight(weightOf(environment.font.weight()));
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
