#include "SwiftUI/ButtonWidget+Private.h"
#include "SwiftUI/ContainerElements+Private.h"

#include <algorithm>

namespace {

struct Chrome {
    double height;
    double sides; ///< Between the label and either end.
    double radius;
};

Chrome chromeOf(ControlSize size) {
    return size == ControlSize::large ? Chrome{32, 16, 8} : Chrome{26, 12, 6};
}

bool isProminent(const Environment& environment) {
    return environment.buttonStyle == ButtonStyle::borderedProminent ||
           environment.keyboardShortcut == KeyboardShortcut::defaultAction;
}

/// The label stands in the middle of the chrome; a plain button is as large as its label.
class ButtonElement : public Element {
public:
    ButtonElement(ButtonWidget& widget, std::optional<Chrome> chrome, ElementPointer label)
        : m_widget(widget), m_chrome(chrome), m_label(std::move(label)) {}

    void place(const QRectF& rect) override {
        const int margin = m_widget.margin();
        m_widget.setGeometry(wholePoints(rect).adjusted(-margin, -margin, margin, margin));
        const QSizeF label =
            m_label->sizeThatFits(m_chrome ? Proposal{} : Proposal::of(rect.size()));
        m_label->place({{margin + (rect.width() - label.width()) / 2,
                         margin + (rect.height() - label.height()) / 2},
                        label});
    }

protected:
    QSizeF measure(const Proposal& proposal) const override {
        if (!m_chrome) return m_label->sizeThatFits(proposal);
        const QSizeF label = m_label->sizeThatFits({});
        return {label.width() + 2 * m_chrome->sides, std::max(label.height(), m_chrome->height)};
    }

private:
    ButtonWidget& m_widget;
    const std::optional<Chrome> m_chrome;
    const ElementPointer m_label;
};

} // namespace

ButtonWidget& takeButton(const ButtonNode& button, const std::string& accessibleName,
                         const Environment& environment, const WidgetPlace& place) {
    auto& widget = place.take<ButtonWidget>();
    widget.setLook({.plain = environment.buttonStyle == ButtonStyle::plain,
                    .prominent = isProminent(environment),
                    .radius = chromeOf(environment.controlSize).radius,
                    .tint = tintOf(environment)});
    widget.setAction(button.action);
    widget.setKeyboardShortcut(environment.keyboardShortcut);
    widget.setHasContentShape(false);
    widget.setAccessibleName(QString::fromStdString(
        environment.accessibilityLabel.empty() ? accessibleName : environment.accessibilityLabel));
    widget.setAccessibleDescription(QString::fromStdString(environment.accessibilityHint));
    return widget;
}

Environment labelEnvironment(const Environment& environment) {
    Environment label = environment;
    label.buttonStyle = ButtonStyle::automatic;
    label.keyboardShortcut.reset();
    label.accessibilityLabel.clear();
    label.accessibilityHint.clear();
    if (environment.buttonStyle != ButtonStyle::plain && isProminent(environment)) {
        label.primary = Qt::white;
        label.foregroundStyle.reset();
    }
    return label;
}

ElementPointer makeButton(ButtonWidget& widget, const Environment& environment,
                          ElementPointer label) {
    std::optional<Chrome> chrome;
    if (environment.buttonStyle != ButtonStyle::plain) chrome = chromeOf(environment.controlSize);
    return std::make_unique<ButtonElement>(widget, chrome, std::move(label));
}
