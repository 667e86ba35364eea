#include "AppKit/Qt/Contents/TabButton.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

#include <algorithm>

namespace {

// In points.
constexpr int symbolSize = 22;
constexpr int labelSize = 11;
constexpr int leastWidth = 68;
constexpr int sideEdge = 10;
constexpr int upperEdge = 5;
constexpr double corner = 6;

/// The accent with enough of the text's colour to read small print by on the chosen tab's ground.
QColor deepAccent(const QPalette& palette) {
    constexpr float share = 0.4F;
    const QColor accent = palette.color(QPalette::Highlight);
    const QColor text = palette.color(QPalette::WindowText);
    const auto mix = [](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(accent.redF(), text.redF()), mix(accent.greenF(), text.greenF()),
                            mix(accent.blueF(), text.blueF()));
}

} // namespace

TabButton::TabButton(const QString& label, const QIcon& icon) {
    setText(label);
    setIcon(icon);
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    QFont small = font();
    small.setPixelSize(labelSize);
    setFont(small);
}

QSize TabButton::sizeHint() const {
    const QSize label = fontMetrics().size(Qt::TextSingleLine, text());
    return {std::max(leastWidth, label.width() + 2 * sideEdge),
            upperEdge + symbolSize + 2 + label.height() + upperEdge};
}

void TabButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    painter.setPen(hasFocus() ? QPen(accent, 2) : Qt::NoPen);
    painter.setBrush(faintText(palette(), isChecked()                ? 0.09
                                          : isDown() || underMouse() ? 0.05
                                                                     : 0));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), corner, corner);

    const QColor ink = isChecked() ? deepAccent(palette()) : palette().color(QPalette::WindowText);
    const QRect symbol((width() - symbolSize) / 2, upperEdge, symbolSize, symbolSize);
    painter.setPen(ink);
    icon().paint(&painter, symbol);
    painter.drawText(rect().adjusted(0, 0, 0, -upperEdge), Qt::AlignHCenter | Qt::AlignBottom,
                     text());
}
