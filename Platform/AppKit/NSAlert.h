#pragma once

#include "AppKit/NSWindow.h"

enum NSAlertStyle : NSUInteger { NSAlertStyleInformational = 1 };

using NSModalResponse = NSInteger;

inline constexpr NSModalResponse NSAlertFirstButtonReturn = 1000;
inline constexpr NSModalResponse NSAlertThirdButtonReturn = 1002;
/// The modal loop has ended without an answer, because the application ends.
inline constexpr NSModalResponse NSModalResponseAbort = -1001;

/// A question in a small window that has to be answered before anything else of the program's.
/// Return presses the first button; Escape the second, as the one that declines, or the only one.
class NSAlert : public NSObject {
public:
    NSAlert();

    /// There is the one style.
    void setAlertStyle(NSAlertStyle) {}
    const std::string& messageText() const { return m_messageText; }
    void setMessageText(const std::string& text) { m_messageText = text; }
    const std::string& informativeText() const { return m_informativeText; }
    void setInformativeText(const std::string& text) { m_informativeText = text; }
    /// The first one at the right.
    const std::vector<std::string>& buttons() const { return m_buttons; }
    void addButtonWithTitle(const std::string& title) { m_buttons.push_back(title); }
    const std::shared_ptr<NSWindow>& window() const { return m_window; }

    /// Shows the alert, and returns which button was pressed, counted from 1000.
    NSModalResponse runModal();

private:
    std::string m_messageText;
    std::string m_informativeText;
    std::vector<std::string> m_buttons;
    const std::shared_ptr<NSWindow> m_window;
};
