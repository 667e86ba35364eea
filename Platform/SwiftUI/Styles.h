// The words that modifiers take: styles, colours and fonts.
#pragma once

#include <optional>
#include <variant>

enum class HorizontalAlignment { leading, center };
enum class VerticalAlignment { top, center };
enum class Alignment { leading, center };

struct Edge {
    enum class Set { horizontal, vertical, all };
};

enum class ControlSize { regular, large };
enum class ButtonStyle { automatic, plain, borderedProminent };
enum class FormStyle { grouped };

/// Return for the default action, Escape to cancel.
enum class KeyboardShortcut { cancelAction, defaultAction };

enum class AccessibilityChildBehavior { ignore };

/// A colour that stands for itself, or one of the platform's that suits light and dark windows.
class Color {
public:
    enum class Name { red, pink, secondary };

    /// In the sRGB colour space, each from 0 to 1.
    struct Components {
        double red = 0;
        double green = 0;
        double blue = 0;
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

/// The desktop's font in a size of this platform, in points.
class Font {
public:
    enum class Weight { regular = 400, medium = 500, semibold = 600, bold = 700 };
    enum class Design { rounded }; ///< Without effect: a desktop has one family of letters.

    struct System {
        double size = 13;
        Weight weight = Weight::regular;
        std::optional<Design> design = std::nullopt;
    };

    static constexpr Font system(const System& system) { return {system.size, system.weight}; }

    static const Font body;
    static const Font headline;
    static const Font subheadline;
    static const Font title2;
    static const Font callout;
    static const Font caption;

    constexpr Font bold() const { return {m_size, Weight::bold}; }

    /// The desktop's digits are all of one width as they are.
    constexpr Font monospacedDigit() const { return *this; }
    double size() const { return m_size; }
    Weight weight() const { return m_weight; }

private:
    constexpr Font(double size, Weight weight) : m_size(size), m_weight(weight) {}

    double m_size;
    Weight m_weight;
};

inline constexpr Font Font::body{13, Font::Weight::regular};
inline constexpr Font Font::headline{13, Font::Weight::bold};
inline constexpr Font Font::subheadline{11, Font::Weight::regular};
inline constexpr Font Font::title2{17, Font::Weight::regular};
inline constexpr Font Font::callout{12, Font::Weight::regular};
inline constexpr Font Font::caption{10, Font::Weight::regular};
