#pragma once

#include "AppKit/NSWindow.h"
#include "Foundation/NSObject.h"

#include <memory>

/// Keeps a window for as long as it may be wanted again.
class NSWindowController : public NSObject {
public:
    explicit NSWindowController(std::shared_ptr<NSWindow> window) : m_window(std::move(window)) {}

    const std::shared_ptr<NSWindow>& window() const { return m_window; }
    void showWindow(const id& sender) { m_window->makeKeyAndOrderFront(sender); }

private:
    std::shared_ptr<NSWindow> m_window;
};
