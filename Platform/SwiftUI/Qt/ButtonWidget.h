#pragma once

#include "SwiftUI/Qt/Environment.h"

#include <QAbstractButton>
#include <QShortcut>

#include <functional>

/// The chrome of a button, with the widgets of its label in it.
class ButtonWidget : public QAbstractButton {
public:
    explicit ButtonWidget(QWidget* parent);

    void setButton(std::function<void()> action, const Environment& environment);
    /// What the label takes over.
    Environment labelEnvironment() const;

    /// Nothing but the label.
    bool isPlain() const { return m_environment.buttonStyle == ButtonStyle::plain; }
    struct Chrome {
        double height;
        double sides; ///< Between the label and either end.
        double radius;
    };
    Chrome chrome() const;
    /// How far the widget reaches beyond the button, for the focus ring; around a plain one also
    /// for the ground that it gets under the pointer.
    int margin() const;
    /// Without a content shape a plain button is pressed only on what its label shows.
    void setHasContentShape(bool has) { m_hasContentShape = has; }

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent*) override;

private:
    /// Filled with the tint.
    bool isProminent() const;
    QRectF area() const;

    Environment m_environment;
    std::function<void()> m_action;
    QShortcut m_shortcut;
    bool m_hasContentShape = false;
};
