#pragma once

#include "AppKit/NSViewController.h"
#include "SwiftUI/View.h"

/// Shows a view tree, anew after each change that an observed object has announced.
class NSHostingController : public NSViewController {
public:
    explicit NSHostingController(View rootView) : m_rootView(std::move(rootView)) {}

    std::unique_ptr<ViewContent> loadView() override;

private:
    const View m_rootView;
};
