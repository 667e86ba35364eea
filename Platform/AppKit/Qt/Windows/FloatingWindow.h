#pragma once

#include "AppKit/Qt/Windows/ContentWindow.h"

/// A window that stands above all others, with a frame of our own: no window manager knows of it.
/// It is dragged by its title bar or an empty place, and throws a shadow where there is a
/// compositor.
class FloatingWindow : public ContentWindow {
public:
    using ContentWindow::ContentWindow;

    /// From level 1000 on window managers have no say.
    static bool suits(const NSWindow& window) { return window.level() >= NSScreenSaverWindowLevel; }

    void orderFront() override;
    void takeKeyboard() override;

protected:
    void dress() override;
    void checkForm() override;
    bool eventFilter(QObject* native, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QRect body() const; ///< Without the shadow.
    bool hasTitleBar() const;
    void takeForm();
    void returnToScreen();

    bool m_translucent = false;
    QPoint m_grip; ///< Where the pointer took hold of the window.
};
