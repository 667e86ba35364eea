#pragma once

#include "AppKit/Qt/Windows/FrameWidget.h"

/// A frame of our own, for windows that stand above all others: no window manager knows of them. It
/// is dragged by its title bar or an empty place, and throws a shadow where there is a compositor.
class FloatingFrame : public FrameWidget {
public:
    FloatingFrame(NSWindow& window, std::unique_ptr<ViewContent> content);

    void enter() override;
    void leave() override;
    void takeKeyboard() override;
    void checkForm() override;

protected:
    bool eventFilter(QObject* native, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QRect body() const; ///< Without the shadow.
    void returnToScreen();

    const bool m_translucent;
    QPoint m_grip; ///< Where the pointer took hold of the window.
};
