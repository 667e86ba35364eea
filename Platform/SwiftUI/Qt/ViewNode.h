#pragma once

#include "SwiftUI/Qt/Element.h"

/// What stands behind a view: how it is realised, laid out and read. Each kind of view derives one.
class ViewNode {
public:
    explicit ViewNode(std::vector<View> children = {}) : m_children(std::move(children)) {}
    ViewNode(const ViewNode&) = delete;
    ViewNode& operator=(const ViewNode&) = delete;
    virtual ~ViewNode() = default;

    const std::vector<View>& children() const { return m_children; }

    /// Whether its children stand in its place in the stack around.
    virtual bool isGroup() const { return false; }
    /// Whether it is what takes the rest of a stack, and parts its neighbours by itself.
    virtual bool isSpacer() const { return false; }

    /// What it reads as in one piece: the texts within in order, joined with ", ".
    virtual std::string accessibleText() const;

    // Unless its kind says otherwise, a view is its children, one upon the other, as large as the
    // last of them; within its widget, if it has one.
    virtual void realise(Element& element, const Surroundings& surroundings) const;
    virtual QSizeF measure(const Element& element, const Proposal& proposal) const;
    virtual void place(const Element& element, const QRectF& rect) const;

private:
    const std::vector<View> m_children;
};

template <class Node, class... Arguments> View makeView(Arguments&&... arguments) {
    return View(std::make_shared<const Node>(std::forward<Arguments>(arguments)...));
}

/// Views that stand one by one in the stack around.
View group(const std::vector<View>& views);
/// With what such groups hold in their place.
std::vector<View> flattened(const std::vector<View>& views);
