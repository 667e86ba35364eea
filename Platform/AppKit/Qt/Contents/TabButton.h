#pragma once

#include <QAbstractButton>

/// A tab in a toolbar: a symbol above its label, in the accent colour while it is the chosen one.
class TabButton : public QAbstractButton {
public:
    /// The icon is drawn in the pen's colour.
    TabButton(const QString& label, const QIcon& icon);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The tabs of one toolbar.
class TabRow : public QWidget {
public:
    using QWidget::QWidget;
};
