#pragma once

#include <QScrollBar>

/// A narrow bar that says how far the content is scrolled, and can be dragged.
class ScrollIndicator : public QScrollBar {
public:
    using QScrollBar::QScrollBar;

    static constexpr int width = 12;

    void setTint(const QColor& tint);
    /// In the tint while the keyboard scrolls the content.
    void setMarked(bool marked);

    QSize sizeHint() const override { return {width, width}; }

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QRectF knob() const;

    QColor m_tint;
    bool m_marked = false;
    double m_grabbedAt = 0; ///< Below the knob's top.
};
