#include "AppKit/NSViewController.h"

#include "AppKit/Qt/Contents/TabContent.h"

void NSTabViewController::addTabViewItem(std::shared_ptr<NSTabViewItem> item) {
    m_items.push_back(std::move(item));
    if (m_selected < 0) setSelectedTabViewItemIndex(0);
}

void NSTabViewController::setSelectedTabViewItemIndex(NSInteger index) {
    if (m_selected == index) return;
    m_selected = index;
    setTitle(m_items.at(static_cast<size_t>(index))->viewController()->title());
    if (selectionChanged) selectionChanged();
}

std::unique_ptr<ViewContent> NSTabViewController::loadView() {
    return std::make_unique<TabContent>(*this);
}
