#include "AppKit/Qt/Contents/ViewContent.h"

#include <QApplication>

QLabel* labelOf(const QString& text, int pixels, QFont::Weight weight) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

QLabel* iconLabel(int side) {
    auto* icon = new QLabel;
    icon->setPixmap(QApplication::windowIcon().pixmap(side));
    icon->setAccessibleName(QApplication::applicationName());
    return icon;
}
