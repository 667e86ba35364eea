#include "SwiftUI/Qt/ViewNode.h"

std::string ViewNode::accessibleText() const {
    std::string all;
    for (const View& child : m_children) {
        const std::string text = child.node().accessibleText();
        if (!all.empty() && !text.empty()) all += ", ";
        all += text;
    }
    return all;
}

void ViewNode::realise(Element& element, const Surroundings& surroundings) const {
    for (const View& child : m_children)
        element.add(child, surroundings);
}

QSizeF ViewNode::measure(const Element& element, const Proposal& proposal) const {
    return element.parts().back().sizeThatFits(proposal);
}

void ViewNode::place(const Element& element, const QRectF& rect) const {
    if (element.hasWidget()) element.widget().setGeometry(wholePoints(rect));
    for (const Element& part : element.parts())
        part.place(element.hasWidget() ? QRectF({}, rect.size()) : rect);
}
