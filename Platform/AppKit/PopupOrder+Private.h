#pragma once

#include <QObject>

class QApplication;

/// Puts the toolkit's menus and tool tips above all windows of the program, whichever they belong
/// to.
class PopupOrder : public QObject {
public:
    explicit PopupOrder(QApplication& application);

    bool eventFilter(QObject* object, QEvent* event) override;
};
