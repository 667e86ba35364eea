#pragma once

#include "AppKit/NSAttributedString.h"
#include "AppKit/NSViewController.h"

/// What the standard About panel shows: the bundle's icon, name and version, and the credits.
class AboutController : public NSViewController {
public:
    void setCredits(std::shared_ptr<NSAttributedString> credits);
    const std::shared_ptr<NSAttributedString>& credits() const { return m_credits; }

    std::unique_ptr<ViewContent> loadView() override;

    /// For the view, once there is one.
    std::function<void()> creditsChanged;

private:
    std::shared_ptr<NSAttributedString> m_credits;
};
