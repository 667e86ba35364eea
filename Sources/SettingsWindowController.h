#pragma once

#include "AppKit/AppKit.h"
#include "SwiftUI/SwiftUI.h"

#include <memory>
#include <string>

/// The settings window: a fixed size, and two tabs in its toolbar.
class SettingsWindowController : public NSWindowController {
public:
    SettingsWindowController();

private:
    explicit SettingsWindowController(std::shared_ptr<NSTabViewController> tabs);

    void add(const std::string& name, const std::string& symbol, const View& view);

    const std::shared_ptr<NSTabViewController> tabs;
};
