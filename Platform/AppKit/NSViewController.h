#pragma once

#include "Foundation/Foundation.h"

#include <functional>
#include <memory>
#include <string>

class ViewContent;

/// Makes the content of a window, and keeps its title and size.
class NSViewController : public NSObject {
public:
    const std::string& title() const { return m_title; }
    void setTitle(const std::string& title) {
        if (m_title == title) return;
        m_title = title;
        if (m_titleChanged) m_titleChanged();
    }

    /// In points. 0 by 0 leaves it to what is shown.
    const NSSize& preferredContentSize() const { return m_preferredContentSize; }
    void setPreferredContentSize(const NSSize& size) { m_preferredContentSize = size; }

    /// Called once, when a window with the controller first comes on the screen.
    virtual std::unique_ptr<ViewContent> loadView() = 0;

    /// For whoever shows the title. A block that is set replaces the one before.
    void onTitleChange(std::function<void()> block) { m_titleChanged = std::move(block); }

private:
    std::string m_title;
    NSSize m_preferredContentSize;
    std::function<void()> m_titleChanged;
};
