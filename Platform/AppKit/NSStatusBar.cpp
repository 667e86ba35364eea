#include "AppKit/NSStatusBar+Private.h"

NSStatusBar& NSStatusBar::systemStatusBar() {
    static NSStatusBar bar;
    return bar;
}

std::shared_ptr<NSStatusItem> NSStatusBar::statusItemWithLength(double) {
    auto item = std::make_shared<NSStatusItem>();
    std::erase_if(m_items, [](const auto& each) { return each.expired(); });
    m_items.push_back(item);
    return item;
}

std::vector<std::shared_ptr<NSStatusItem>> itemsOf(const NSStatusBar& bar) {
    std::vector<std::shared_ptr<NSStatusItem>> items;
    for (const auto& each : bar.m_items)
        if (auto item = each.lock()) items.push_back(std::move(item));
    return items;
}
