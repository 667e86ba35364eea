#include "AppKit/Qt/Windows/Accessible.h"
#include "SwiftUI/Qt/Element.h"

namespace {

/// It reads as its accessible name.
class AccessibleGroup : public QWidget, public Accessible {
public:
    using QWidget::QWidget;

    QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }
    bool isOneElement() const override { return true; }
};

/// One element to assistive technology. It reads as nothing unless a label stands outside.
class AccessibleElement : public Element {
public:
    AccessibleElement(const Environment& environment, const View& content) {
        Environment inner = environment;
        inner.parent = &take<AccessibleGroup>(environment);
        inner.accessibilityLabel.clear();
        inner.accessibilityHint.clear();
        add(content, inner);
        readAs("");
    }
};

class LabelledElement : public Element {
public:
    LabelledElement(const Environment& environment, const View& content, const std::string& label)
        : Element(content, environment) {
        readAs(label);
    }
};

/// With a value that the views within take over.
template <class Value, class Given>
View inherited(const View& view, Value Environment::*member, const Given& value) {
    return within(view, [member, value](Environment& environment) { environment.*member = value; });
}

} // namespace

View within(const View& view, std::function<void(Environment&)> change) {
    return View([view, change = std::move(change)](const Environment& around) {
        Environment changed = around;
        change(changed);
        return view.realise(changed);
    });
}

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
    return makeView<AccessibleElement>(*this);
}

View View::accessibilityLabel(const std::string& label) const {
    return inherited(makeView<LabelledElement>(*this, label), &Environment::accessibilityLabel,
                     label);
}

View View::accessibilityHint(const std::string& hint) const {
    return inherited(*this, &Environment::accessibilityHint, hint);
}

View View::onAppear(std::function<void()> action) const {
    return within(*this, [action = std::move(action)](Environment& environment) {
        environment.appearActions->push_back(action);
    });
}
