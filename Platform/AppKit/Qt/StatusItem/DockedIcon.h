#pragma once

#include "AppKit/Qt/StatusItem/TrayIcon.h"
#include "WindowServer/Session.h"

#include <QImage>
#include <QWidget>

/// The icon in a tray on the X server: a window that the tray takes in. The pixels that its drawing
/// leaves free show the tray's own ground.
class DockedIcon : public QWidget, public TrayItem {
public:
    explicit DockedIcon(NSStatusBarButton& button);

    void refresh() override;
    QRect place() const override { return {m_corner, size()}; }

    /// For assistive technology too.
    void click(NSEventType type, Qt::KeyboardModifiers modifiers = {}) {
        ::click(*this, m_button, type, modifiers);
    }

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void moveEvent(QMoveEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void lookBeneath();

    NSStatusBarButton& m_button;
    const WindowServer::TrayLook m_look;
    QImage m_ground; ///< Empty where the tray's shows through, or is not known.
    QColor m_ink;
    Qt::MouseButton m_pressed = Qt::NoButton;
    QPoint m_corner; ///< On the screen. The tray may move it without telling.
};
