#pragma once

#include "SwiftUI/Styles.h"

#include <QFont>
#include <QPalette>

#include <string>

/// What a view takes over from those around it.
struct Environment {
    QPalette palette;
    QFont systemFont;

    Font font = Font::body;
    double tracking = 0;
    QColor primary; ///< What text is drawn in unless a style says otherwise.
    std::optional<ShapeStyle> foregroundStyle;
    std::optional<Color> tint;

    ControlSize controlSize = ControlSize::regular;
    ButtonStyle buttonStyle = ButtonStyle::automatic;

    // For the one element that stands within.
    std::optional<KeyboardShortcut> keyboardShortcut;
    std::string accessibilityLabel;
    std::string accessibilityHint;
};

QFont fontOf(const Environment& environment);
QColor foregroundOf(const Environment& environment);
/// The colour that marks what is on or important; the desktop's where no tint is set.
QColor tintOf(const Environment& environment);
QColor colorOf(const Color& color, const Environment& environment);
