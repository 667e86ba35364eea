#pragma once

#include <optional>

/// The desktop's font in a size of this platform, in points.
class Font {
public:
    enum class Weight { regular, medium, semibold, bold };
    enum class Design { rounded }; ///< Without effect: a desktop has one family of letters.

    struct System {
        double size = 13;
        Weight weight = Weight::regular;
        std::optional<Design> design = std::nullopt;
    };

    static constexpr Font system(const System& system) {
        Font font;
        font.m_size = system.size;
        font.m_weight = system.weight;
        return font;
    }

    static const Font body;
    static const Font headline;
    static const Font subheadline;
    static const Font title2;
    static const Font callout;
    static const Font caption;

    constexpr Font bold() const {
        Font font = *this;
        font.m_weight = Weight::bold;
        return font;
    }

    /// The desktop's digits are all of one width as they are.
    constexpr Font monospacedDigit() const { return *this; }

    double size() const { return m_size; }
    Weight weight() const { return m_weight; }

private:
    constexpr Font() = default;
    constexpr Font(double size, Weight weight) : m_size(size), m_weight(weight) {}

    double m_size = 13;
    Weight m_weight = Weight::regular;
};

inline constexpr Font Font::body{13, Font::Weight::regular};
inline constexpr Font Font::headline{13, Font::Weight::bold};
inline constexpr Font Font::subheadline{11, Font::Weight::regular};
inline constexpr Font Font::title2{17, Font::Weight::regular};
inline constexpr Font Font::callout{12, Font::Weight::regular};
inline constexpr Font Font::caption{10, Font::Weight::regular};
