#pragma once

#include "AppKit/NSViewController.h"
#include "AppKit/Qt/Drawing/Symbol.h"

#include <QApplication>
#include <QLabel>
#include <QWidget>

/// What a view controller shows: a widget for the inside of a window, as large as its size hint
/// says unless the window is told another size.
class ViewContent : public QWidget {
public:
    using QWidget::QWidget;

    /// What of its height, in points, is the window's toolbar and does not count as content.
    virtual int toolbarHeight() const { return 0; }

protected:
    void showEvent(QShowEvent*) override {
        // Else the first button would have the focus, and a stray Space press it.
        if (!window()->focusWidget()) window()->setFocus();
    }
};

/// Shows a content that is made from what it is given. For the platform's own windows.
template <class Content, class Given> class ContentController : public NSViewController {
public:
    explicit ContentController(Given given) : m_given(given) {}
    std::unique_ptr<ViewContent> loadView() override { return std::make_unique<Content>(m_given); }

private:
    const Given m_given;
};

/// A text of so many pixels' height.
inline QLabel* labelOf(const QString& text, int pixels, QFont::Weight weight) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    return label;
}

/// The program's icon, of so many points each way.
inline QLabel* iconLabel(int side) {
    auto* icon = new QLabel;
    icon->setPixmap(programIcon().pixmap(side));
    icon->setAccessibleName(QApplication::applicationName());
    return icon;
}
