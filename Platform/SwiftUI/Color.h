// What a view is painted with.
#pragma once

#include <variant>

/// A colour that stands for itself, or one of the platform's that suits light and dark windows.
class Color {
public:
    enum class Name { red, pink, secondary };

    /// In the sRGB colour space, each from 0 to 1.
    struct Components {
        double red = 0;
        double green = 0;
        double blue = 0;
        bool operator==(const Components&) const = default;
    };

    constexpr explicit Color(const Components& components) : m_base(components) {}

    static const Color red;
    static const Color pink;
    static const Color secondary;

    /// The same colour, seen through by so much more: 0 is invisible.
    constexpr Color opacity(double opacity) const {
        Color color = *this;
        color.m_opacity *= opacity;
        return color;
    }

    const std::variant<Components, Name>& base() const { return m_base; }
    double opacity() const { return m_opacity; }

private:
    constexpr explicit Color(Name name) : m_base(name) {}

    std::variant<Components, Name> m_base;
    double m_opacity = 1;
};

inline constexpr Color Color::red{Color::Name::red};
inline constexpr Color Color::pink{Color::Name::pink};
inline constexpr Color Color::secondary{Color::Name::secondary};

/// How far the text recedes behind the ordinary one.
enum class HierarchicalShapeStyle { secondary };

using ShapeStyle = std::variant<Color, HierarchicalShapeStyle>;
