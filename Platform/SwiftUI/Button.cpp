#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Windows/Accessible.h"
#include "SwiftUI/Qt/Element.h"
#include "SwiftUI/Views.h"

#include <QAbstractButton>
#include <QShortcut>

namespace {

/// The chrome of a button, with the widgets of its label in it.
class ButtonWidget : public QAbstractButton, public Accessible {
public:
    explicit ButtonWidget(QWidget* parent) : QAbstractButton(parent), m_shortcut(this) {
        setFocusPolicy(Qt::TabFocus);
        setAttribute(Qt::WA_Hover);
        const auto act = [this] {
            // What the action leads to may draw this button anew, with another action.
            const auto action = m_action;
            if (action) action();
        };
        connect(this, &QAbstractButton::clicked, this, act);
        connect(&m_shortcut, &QShortcut::activated, this, act);
    }

    void setButton(std::function<void()> action, const Environment& environment) {
        m_action = std::move(action);
        m_environment = environment;
        m_environment.parent = this;
        m_hasContentShape = false;
        QList<QKeySequence> keys;
        const auto& shortcut = environment.keyboardShortcut;
        if (shortcut == KeyboardShortcut::defaultAction) keys = {Qt::Key_Return, Qt::Key_Enter};
        if (shortcut == KeyboardShortcut::cancelAction) keys = {Qt::Key_Escape};
        m_shortcut.setKeys(keys);
        update();
    }

    /// What the label takes over.
    Environment labelEnvironment() const {
        Environment label = m_environment;
        label.buttonStyle = ButtonStyle::automatic;
        label.keyboardShortcut.reset();
        label.accessibilityLabel.clear();
        label.accessibilityHint.clear();
        if (isProminent()) {
            label.primary = Qt::white;
            label.foregroundStyle.reset();
        }
        return label;
    }

    /// Nothing but the label.
    bool isPlain() const { return m_environment.buttonStyle == ButtonStyle::plain; }
    struct Chrome {
        double height;
        double sides; ///< Between the label and either end.
        double radius;
    };

    Chrome chrome() const {
        if (isPlain()) return {.height = 0, .sides = 0, .radius = 6};
        if (m_environment.controlSize == ControlSize::large)
            return {.height = 32, .sides = 16, .radius = 8};
        return {.height = 26, .sides = 12, .radius = 6};
    }

    /// How far the widget reaches beyond the button, for the focus ring; around a plain one also
    /// for the ground that it gets under the pointer.
    QMargins margins() const { return focusRingMargins + (isPlain() ? 4 : 0); }
    /// Without a content shape a plain button is pressed only on what its label shows.
    void setHasContentShape(bool has) { m_hasContentShape = has; }
    QAccessible::Role accessibleRole() const override { return QAccessible::Button; }
    bool isOneElement() const override { return true; }

protected:
    bool hitButton(const QPoint& position) const override {
        return area().contains(position) && (!isPlain() || m_hasContentShape || childAt(position));
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const double radius = chrome().radius;
        const QColor tint = tintOf(m_environment);
        if (!isPlain())
            return drawPushButton(
                painter, area(), palette(),
                {radius, isProminent(), tint, isDown(), underMouse(), hasFocus()});
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(faintText(palette(), isDown() ? 0.1 : underMouse() ? 0.045 : 0));
        painter.drawRoundedRect(area(), radius, radius);
        if (hasFocus()) drawFocusRing(painter, area(), radius, tint);
    }

private:
    /// Filled with the tint.
    bool isProminent() const {
        return !isPlain() && (m_environment.buttonStyle == ButtonStyle::borderedProminent ||
                              m_environment.keyboardShortcut == KeyboardShortcut::defaultAction);
    }

    QRectF area() const { return QRectF(rect()) - focusRingMargins; }

    Environment m_environment;
    std::function<void()> m_action;
    QShortcut m_shortcut;
    bool m_hasContentShape = false;
};

/// The label stands in the middle of the chrome; a plain button is as large as its label.
class ButtonElement : public Element {
public:
    ButtonElement(const Environment& environment, const View& label,
                  const std::function<void()>& action) {
        auto& button = take<ButtonWidget>(environment);
        button.setButton(action, environment);
        add(label, button.labelEnvironment());
        if (button.accessibleName().isEmpty())
            button.setAccessibleName(QString::fromStdString(accessibleText()));
    }

    void place(const QRectF& rect) const override {
        const auto& button = widget<ButtonWidget>();
        const QMargins margins = button.margins();
        widget().setGeometry(wholePoints(rect) + margins);
        const QSizeF label =
            Element::measure(button.isPlain() ? Proposal::of(rect.size()) : Proposal{});
        parts().front()->place({{margins.left() + (rect.width() - label.width()) / 2,
                                 margins.top() + (rect.height() - label.height()) / 2},
                                label});
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        const auto& button = widget<ButtonWidget>();
        if (button.isPlain()) return Element::measure(proposal);
        const ButtonWidget::Chrome chrome = button.chrome();
        const QSizeF label = Element::measure({});
        return {label.width() + 2 * chrome.sides, std::max(label.height(), chrome.height)};
    }
};

} // namespace

Button::Button(const Options& options)
    : View(makeView<ButtonElement>(options.label, options.action)) {}
Button::Button(const std::string& title, std::function<void()> action)
    : Button({.action = std::move(action), .label = Text(title)}) {}

View View::contentShape(const Shape&) const {
    return within(*this, [](Environment& environment) {
        if (auto* const button = dynamic_cast<ButtonWidget*>(environment.parent))
            button->setHasContentShape(true);
    });
}
