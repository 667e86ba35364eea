// The floating buttons, one on each screen.
#pragma once

#include "BubblePanel.h"

#include "AppKit/AppKit.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

class Bubble : public std::enable_shared_from_this<Bubble> {
public:
    static const std::shared_ptr<Bubble>& shared();

    /// Makes the menu that a button opens, anew each time.
    std::function<std::shared_ptr<NSMenu>()> menu = [] { return std::make_shared<NSMenu>(); };

    /// Makes the buttons and follows the screens and the cover from here on. Called once.
    void start();

    /// By display number.
    const std::map<uint32_t, std::shared_ptr<BubblePanel>>& panels() const { return m_panels; }

private:
    void rebuild();
    std::shared_ptr<BubblePanel> add(uint32_t home, const NSScreen& on);
    void refreshIcons();
    void settle(BubblePanel& panel);

    std::map<uint32_t, std::shared_ptr<BubblePanel>> m_panels;
};
