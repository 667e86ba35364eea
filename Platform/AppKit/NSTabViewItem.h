#pragma once

#include "AppKit/NSImage.h"
#include "AppKit/NSViewController.h"
#include "Foundation/NSObject.h"

#include <memory>
#include <string>

/// One tab: what it says, and who makes what it shows.
class NSTabViewItem : public NSObject {
public:
    static std::shared_ptr<NSTabViewItem>
    tabViewItemWithViewController(std::shared_ptr<NSViewController> controller) {
        return std::shared_ptr<NSTabViewItem>(new NSTabViewItem(std::move(controller)));
    }

    const std::shared_ptr<NSViewController>& viewController() const { return m_viewController; }

    const std::string& label() const { return m_label; }
    void setLabel(const std::string& label) { m_label = label; }

    /// Above the label; null for none.
    const std::shared_ptr<NSImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<NSImage> image) { m_image = std::move(image); }

private:
    explicit NSTabViewItem(std::shared_ptr<NSViewController> controller)
        : m_viewController(std::move(controller)) {}

    const std::shared_ptr<NSViewController> m_viewController;
    std::string m_label;
    std::shared_ptr<NSImage> m_image;
};
