#pragma once

#include <QWidget>

/// What a view controller shows: a widget for the inside of a window, which makes itself as large
/// as its size hint says unless the window is told another size. It hears by its show event that it
/// comes on the screen.
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
