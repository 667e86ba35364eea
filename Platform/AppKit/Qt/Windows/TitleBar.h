#pragma once

#include <QWidget>

/// The bar on top of a window whose frame is our own: its title, and a button to close it.
class TitleBar : public QWidget {
public:
    static constexpr int height = 30; ///< In points.

    TitleBar(QWidget& window, bool closable);

protected:
    void paintEvent(QPaintEvent* event) override;
};
