#pragma once

#include <QObject>
#include <QWidget>

#include <map>

class QApplication;

/// Puts the toolkit's menus and tool tips above all windows of the program, whichever they belong
/// to.
class PopupOrder : public QObject {
public:
    explicit PopupOrder(QApplication& application);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void raise(const QWidget& popup);
    void drop(const QObject* popup);

    std::map<const QObject*, WId> m_raised; ///< Windows of popups that are shown.
};
