#include "SwiftUI/View.h"

#include "SwiftUI/ViewNode+Private.h"

namespace {

View modified(const View& view, Modifier modifier) {
    return View(ViewNode{ModifiedNode{view, std::move(modifier)}});
}

} // namespace

View::View(ViewNode node) : m_node(std::make_shared<const ViewNode>(std::move(node))) {}

View::View(std::function<View()> body) : View(ViewNode{BodyNode{std::move(body)}}) {}

View View::font(const Font& font) const { return modified(*this, font); }
View View::tracking(double tracking) const { return modified(*this, Tracking{tracking}); }
View View::foregroundStyle(const ShapeStyle& style) const { return modified(*this, style); }
View View::tint(const Color& color) const { return modified(*this, Tint{color}); }

View View::padding(Edge::Set edges, double length) const {
    return modified(*this, Padding{edges, length});
}

View View::frame(const FixedFrame& frame) const { return modified(*this, frame); }
View View::frame(const FlexibleFrame& frame) const { return modified(*this, frame); }
View View::fixedSize(const FixedAxes& axes) const { return modified(*this, axes); }

View View::background(const View& background) const {
    return modified(*this, Background{background});
}

View View::contentShape(const Shape& shape) const { return modified(*this, shape); }
View View::controlSize(ControlSize size) const { return modified(*this, size); }
View View::buttonStyle(ButtonStyle style) const { return modified(*this, style); }
View View::formStyle(FormStyle style) const { return modified(*this, style); }

View View::keyboardShortcut(KeyboardShortcut shortcut) const { return modified(*this, shortcut); }

View View::accessibilityElement(const ElementOptions& options) const {
    return modified(*this, options);
}

View View::accessibilityLabel(const std::string& label) const {
    return modified(*this, AccessibilityLabel{label});
}

View View::accessibilityHint(const std::string& hint) const {
    return modified(*this, AccessibilityHint{hint});
}

View View::onAppear(std::function<void()> action) const {
    return modified(*this, OnAppear{std::move(action)});
}
