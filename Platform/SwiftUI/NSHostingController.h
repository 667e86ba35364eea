#pragma once

#include "AppKit/NSViewController.h"
#include "SwiftUI/View.h"

/// Shows a view tree. It draws the tree anew after an observed object has announced a change, and
/// the keyboard's focus and what is scrolled stay where they are.
class NSHostingController : public NSViewController {
public:
    explicit NSHostingController(View rootView) : m_rootView(std::move(rootView)) {}

    std::unique_ptr<ViewContent> loadView() override;

private:
    const View m_rootView;
};
