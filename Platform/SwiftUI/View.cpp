#include "AppKit/Qt/Windows/Accessible.h"
#include "SwiftUI/Qt/ViewNode.h"

namespace {

class BodyNode : public ViewNode {
public:
    explicit BodyNode(std::function<View()> body) : m_body(std::move(body)) {}
    std::string accessibleText() const override { return m_body().node().accessibleText(); }

    void realise(Element& element, const Surroundings& surroundings) const override {
        element.add(m_body(), surroundings);
    }

private:
    const std::function<View()> m_body;
};

/// A view within other surroundings, which reads as its label if it has one.
class SurroundedNode : public ViewNode {
public:
    SurroundedNode(const View& content, SurroundingsChange change,
                   std::optional<std::string> label = std::nullopt)
        : ViewNode({content}), m_change(std::move(change)), m_label(std::move(label)) {}

    std::string accessibleText() const override {
        return m_label ? *m_label : ViewNode::accessibleText();
    }

    void realise(Element& element, const Surroundings& surroundings) const override {
        Surroundings changed = surroundings;
        m_change(changed);
        ViewNode::realise(element, changed);
    }

private:
    const SurroundingsChange m_change;
    const std::optional<std::string> m_label;
};

/// It reads as its accessible name.
class AccessibleGroup : public QWidget, public Accessible {
public:
    using QWidget::QWidget;

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
    bool isOneElement() const override { return true; }
};

/// One element to assistive technology. It reads as nothing unless a label stands outside.
class AccessibleNode : public ViewNode {
public:
    explicit AccessibleNode(const View& content) : ViewNode({content}) {}
    std::string accessibleText() const override { return {}; }

    void realise(Element& element, const Surroundings& surroundings) const override {
        Surroundings within = surroundings;
        within.parent = &element.take<AccessibleGroup>(surroundings);
        within.environment.accessibilityLabel.clear();
        within.environment.accessibilityHint.clear();
        ViewNode::realise(element, within);
    }
};

/// With a value that the views within take over.
template <class Value, class Given>
View inherited(const View& view, Value Environment::*member, const Given& value) {
    return surrounded(view, [member, value](Surroundings& surroundings) {
        surroundings.environment.*member = value;
    });
}

} // namespace

View surrounded(const View& view, SurroundingsChange change) {
    return makeView<SurroundedNode>(view, std::move(change));
}

View::View(std::function<View()> body) : View(std::make_shared<BodyNode>(std::move(body))) {}
View View::font(const Font& font) const { return inherited(*this, &Environment::font, font); }

View View::tracking(double tracking) const {
    return inherited(*this, &Environment::tracking, tracking);
}

View View::foregroundStyle(const ShapeStyle& style) const {
    return inherited(*this, &Environment::foregroundStyle, style);
}

View View::tint(const Color& color) const { return inherited(*this, &Environment::tint, color); }

View View::controlSize(ControlSize size) const {
    return inherited(*this, &Environment::controlSize, size);
}

View View::buttonStyle(ButtonStyle style) const {
    return inherited(*this, &Environment::buttonStyle, style);
}

View View::keyboardShortcut(KeyboardShortcut shortcut) const {
    return inherited(*this, &Environment::keyboardShortcut, shortcut);
}

View View::accessibilityElement(const ElementOptions&) const {
    return makeView<AccessibleNode>(*this);
}

View View::accessibilityLabel(const std::string& label) const {
    const auto change = [label](Surroundings& surroundings) {
        surroundings.environment.accessibilityLabel = label;
    };
    return makeView<SurroundedNode>(*this, change, label);
}

View View::accessibilityHint(const std::string& hint) const {
    return inherited(*this, &Environment::accessibilityHint, hint);
}

View View::onAppear(std::function<void()> action) const {
    return surrounded(*this, [action = std::move(action)](Surroundings& surroundings) {
        surroundings.appearActions.push_back(action);
    });
}
