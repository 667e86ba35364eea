#pragma once

#include "AppKit/Qt/Windows/NativeWindow.h"

class PanelWidget;

/// A window that is a widget of the toolkit's while it is ordered front, and nothing otherwise.
class PanelWindow : public NativeWindow {
public:
    explicit PanelWindow(NSWindow& window) : m_window(window) {}
    ~PanelWindow() override;

    /// A compositor has come or gone: every panel takes on the form that suits.
    static void compositingChanged();
    /// The last open menu of the program's has closed.
    static void menuClosed();
    /// Another program took the window of this number off the screen.
    static void windowGone(unsigned long number);

    NSInteger number() const override;
    void setTitle(const std::string& title) override;
    void setFrame(const NSRect& frame) override;
    void setLevel(NSInteger level) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setAlpha(double alpha) override;
    void displayViews() override;
    void describeViews() override;
    void orderFront() override;
    void orderOut() override;

private:
    NSWindow& m_window;
    std::shared_ptr<PanelWidget> m_widget;
};
