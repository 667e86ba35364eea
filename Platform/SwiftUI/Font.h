#pragma once

#include <optional>

/// The desktop's font in a size of this platform, in points.
class Font {
public:
    enum class TextStyle { body, headline, subheadline, title2, callout, caption };
    enum class Weight { regular, medium, semibold, bold };
    enum class Design { rounded };

    struct System {
        double size = 13;
        Weight weight = Weight::regular;
        std::optional<Design> design = std::nullopt;
    };

    static constexpr Font system(const System& system) {
        Font font;
        font.m_size = system.size;
        font.m_weight = system.weight;
        font.m_design = system.design;
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

    /// Digits of one width.
    constexpr Font monospacedDigit() const {
        Font font = *this;
        font.m_monospacedDigit = true;
        return font;
    }

    /// Absent for a system font of a chosen size.
    const std::optional<TextStyle>& textStyle() const { return m_textStyle; }
    double size() const { return m_size; }
    Weight weight() const { return m_weight; }
    const std::optional<Design>& design() const { return m_design; }
    bool hasMonospacedDigit() const { return m_monospacedDigit; }

private:
    constexpr Font() = default;
    constexpr Font(TextStyle textStyle, double size, Weight weight)
        : m_textStyle(textStyle), m_size(size), m_weight(weight) {}

    std::optional<TextStyle> m_textStyle;
    double m_size = 13;
    Weight m_weight = Weight::regular;
    std::optional<Design> m_design;
    bool m_monospacedDigit = false;
};

inline constexpr Font Font::body{Font::TextStyle::body, 13, Font::Weight::regular};
inline constexpr Font Font::headline{Font::TextStyle::headline, 13, Font::Weight::bold};
inline constexpr Font Font::subheadline{Font::TextStyle::subheadline, 11, Font::Weight::regular};
inline constexpr Font Font::title2{Font::TextStyle::title2, 17, Font::Weight::regular};
inline constexpr Font Font::callout{Font::TextStyle::callout, 12, Font::Weight::regular};
inline constexpr Font Font::caption{Font::TextStyle::caption, 10, Font::Weight::regular};
