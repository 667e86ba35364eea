#pragma once

#include "SwiftUI/Environment+Private.h"

#include <QAbstractButton>
#include <QShortcut>

#include <functional>

/// The chrome of a button, with the widgets of its label in it.
class ButtonWidget : public QAbstractButton {
public:
    explicit ButtonWidget(QWidget* parent);

    /// How a button is drawn, apart from its label.
    struct Look {
        bool plain = false;     ///< Nothing but the label.
        bool prominent = false; ///< Filled with the tint.
        double radius = 0;
        QColor tint;
    };
    void setLook(const Look& look);
    /// How far the widget reaches beyond the button, for the focus ring; around a plain one also
    /// for the ground that it gets under the pointer.
    int margin() const;
    void setAction(std::function<void()> action) { m_action = std::move(action); }
    void setKeyboardShortcut(const std::optional<KeyboardShortcut>& shortcut);
    /// Without a content shape a plain button is pressed only on what its label shows.
    void setHasContentShape(bool has) { m_hasContentShape = has; }

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent*) override;

private:
    QRectF chrome() const;

    Look m_look;
    std::function<void()> m_action;
    QShortcut m_shortcut;
    bool m_hasContentShape = false;
};
