#include "SwiftUI/Controls.h"
#include "SwiftUI/Qt/ButtonWidget.h"
#include "SwiftUI/Qt/ViewNode.h"
#include "SwiftUI/Text.h"

#include <algorithm>

namespace {

/// The label stands in the middle of the chrome; a plain button is as large as its label.
class ButtonNode : public ViewNode {
public:
    ButtonNode(const View& label, std::function<void()> action)
        : ViewNode({label}), m_action(std::move(action)) {}

    void realise(Element& element, const Surroundings& surroundings) const override {
        auto& widget = element.take<ButtonWidget>(surroundings);
        widget.setButton(m_action, surroundings.environment);
        if (widget.accessibleName().isEmpty())
            widget.setAccessibleName(QString::fromStdString(accessibleText()));
        Surroundings within = surroundings;
        within.parent = &widget;
        within.environment = widget.labelEnvironment();
        ViewNode::realise(element, within);
    }

    QSizeF measure(const Element& element, const Proposal& proposal) const override {
        const auto& widget = element.widget<ButtonWidget>();
        if (widget.isPlain()) return ViewNode::measure(element, proposal);
        const ButtonWidget::Chrome chrome = widget.chrome();
        const QSizeF label = ViewNode::measure(element, {});
        return {label.width() + 2 * chrome.sides, std::max(label.height(), chrome.height)};
    }

    void place(const Element& element, const QRectF& rect) const override {
        auto& widget = element.widget<ButtonWidget>();
        const int margin = widget.margin();
        widget.setGeometry(wholePoints(rect).adjusted(-margin, -margin, margin, margin));
        const QSizeF label =
            ViewNode::measure(element, widget.isPlain() ? Proposal::of(rect.size()) : Proposal{});
        element.parts().front().place({{margin + (rect.width() - label.width()) / 2,
                                        margin + (rect.height() - label.height()) / 2},
                                       label});
    }

private:
    const std::function<void()> m_action;
};

} // namespace

Button::Button(const Options& options)
    : View(makeView<ButtonNode>(options.label, options.action)) {}
Button::Button(const std::string& title, std::function<void()> action)
    : Button({.action = std::move(action), .label = Text(title)}) {}
