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
    QRgb base; ///< Of lists and fields.
    QRgb control;
    QRgb line;
    QRgb text;
    QRgb secondaryText; ///< Legible on the window and on the base.
    QRgb faintText;
};

constexpr QRgb onAccent = 0xffffffff;
constexpr Tones lightTones = {0xfff5f5f7, 0xffffffff, 0xffffffff, 0xffc8c8cc,
                              0xff1d1d1f, 0xff66666b, 0xff8a8a8e};
constexpr Tones darkTones = {0xff29292b, 0xff1e1e20, 0xff4a4a4d, 0xff55555a,
                             0xfff2f2f4, 0xffa8a8ae, 0xff8e8e93};

QPalette paletteOf(const Tones& tones) {
    const QColor accent(QString::fromStdString(infoOf("NSAccentColorName")));
    using Role = QPalette::ColorRole;
    const QColor window(tones.window);
    const std::pair<Role, QColor> colors[] = {
        {QPalette::Window, window},
        {QPalette::WindowText, tones.text},
        {QPalette::Base, tones.base},
        {QPalette::AlternateBase, tones.window},
        {QPalette::Text, tones.text},
        {QPalette::PlaceholderText, tones.secondaryText},
        {QPalette::ToolTipBase, tones.window},
        {QPalette::ToolTipText, tones.text},
        {QPalette::Button, tones.control},
        {QPalette::ButtonText, tones.text},
        {QPalette::BrightText, onAccent},
        {QPalette::Light, window.lighter(115)},
        {QPalette::Midlight, window.lighter(107)},
        {QPalette::Mid, tones.line},
        {QPalette::Dark, window.darker(150)},
        {QPalette::Shadow, Qt::black},
        {QPalette::Highlight, accent},
        {QPalette::HighlightedText, onAccent},
        {QPalette::Link, accent},
        {QPalette::LinkVisited, accent},
    };
    QPalette palette;
    for (const auto& [role, color] : colors)
        palette.setColor(role, color);
    for (const Role role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, tones.faintText);
    return palette;
}

void wear(const QPalette& palette) {
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette); // Tool tips have one of their own.
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
        wear(paletteOf(dark->wish().value_or(foundDark) ? darkTones : lightTones));
    };
    dark->onChanged();
}
