#pragma once

#include "SwiftUI/WidgetElements+Private.h"

/// Makes the elements and widgets of a view tree, which show nothing before they are placed.
class Realisation {
public:
    explicit Realisation(WidgetPool& pool) : m_pool(pool) {}

    ElementPointer realise(const View& view, const Environment& environment, QWidget& parent);

    /// What runs as the tree comes on the screen.
    const std::vector<std::function<void()>>& appearActions() const { return m_appearActions; }

private:
    struct Part; ///< One view with where it stands and what it takes over.

    ElementPointer realise(const Part& part);
    ElementPointer realise(const StackNode& stack, const Part& part);
    ElementPointer realise(const ForEachNode& forEach, const Part& part);
    ElementPointer realise(const ScrollNode& scroll, const Part& part);
    ElementPointer realise(const FormNode& form, const Part& part);
    ElementPointer realise(const SectionNode& section, const Part& part);
    ElementPointer realise(const LabelNode& label, const Part& part);
    ElementPointer realise(const ButtonNode& button, const Part& part);
    ElementPointer realise(const ModifiedNode& node, const Part& part);
    ElementPointer realiseRows(const std::vector<View>& rows, const Part& part);
    std::vector<ElementPointer> realiseAll(const std::vector<View>& views, const Part& part);

    WidgetPool& m_pool;
    std::vector<std::function<void()>> m_appearActions;
};
