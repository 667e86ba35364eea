#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Appearance/Preference.h"
#include "AppKit/Qt/Application/Launch.h"
#include "AppKit/Qt/Menus/MenuPopup.h"
#include "Foundation/NSBundle+Private.h"

#include <QApplication>
#include <QToolTip>

namespace {

constexpr int systemFontSize = 13; // In points.

struct Tones {
    QRgb window;
    QRgb text;
    QRgb secondaryText; ///< Legible on the window.
    QRgb faintText;
};

constexpr Tones lightTones = {0xfff5f5f7, 0xff1d1d1f, 0xff66666b, 0xff8a8a8e};
constexpr Tones darkTones = {0xff29292b, 0xfff2f2f4, 0xffa8a8ae, 0xff8e8e93};

/// What the program's own drawing and the toolkit's tool tips look up.
QPalette paletteOf(const Tones& tones) {
    QPalette palette;
    palette.setColor(QPalette::Window, tones.window);
    palette.setColor(QPalette::WindowText, tones.text);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, tones.faintText);
    palette.setColor(QPalette::PlaceholderText, tones.secondaryText);
    palette.setColor(QPalette::ToolTipBase, tones.window);
    palette.setColor(QPalette::ToolTipText, tones.text);
    palette.setColor(QPalette::Highlight, QString::fromStdString(infoOf("NSAccentColorName")));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

void dressWindows() {
    const bool foundDark = isDark(QApplication::palette());
    QApplication::setStyle(makeMenuStyle());
    QFont font = QApplication::font();
    font.setPixelSize(systemFontSize);
    QApplication::setFont(font);
    static auto* const dark = new Preference("color-scheme", {"dark", "black", "inverse"});
    dark->onChanged = [foundDark] {
        const auto palette = paletteOf(dark->wish().value_or(foundDark) ? darkTones : lightTones);
        QApplication::setPalette(palette);
        QToolTip::setPalette(palette); // Tool tips have one of their own.
    };
    dark->onChanged();
}
