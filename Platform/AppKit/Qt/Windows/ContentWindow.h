#pragma once

#include "AppKit/Qt/Windows/NativeWindow.h"
#include "WindowServer/Session.h"

#include <QObject>

class FrameWidget;
class ViewContent;

/// A window that shows what a view controller makes. Its widgets are made when it first comes on
/// the screen, at the level that the window has by then, and kept, with all that the user did to
/// them, until the window goes.
class ContentWindow : public NativeWindow {
public:
    explicit ContentWindow(NSWindow& window);
    ~ContentWindow() override;

    /// A compositor has come or gone: every window takes on the form that suits.
    static void compositingChanged();
    /// Another program took that window off the screen: whatever of ours stood there comes again.
    static void windowGone(WindowServer::ToolkitWindow gone);
    /// The program has become the active one: windows that left because it was not come back, and
    /// the frontmost takes the keyboard.
    static void activate();

    /// The program ends: every window leaves and gives the keyboard back, and its widgets go while
    /// the toolkit still stands.
    static void leaveForGood();

    /// No other window with a frame takes input while this one is on the screen.
    void setModal(bool modal) { m_modal = modal; }

    NSInteger number() const override;
    NSRect frameAround(const NSRect& content) const override;
    void setTitle(const std::string& title) override;
    void setFrame(const NSRect& frame) override;
    void makeKey() override;
    void orderFront() override;
    void orderOut() override;

private:
    void makeFrame(std::unique_ptr<ViewContent> content);
    void changeForm();

    NSWindow& m_window;
    bool m_modal = false;
    std::unique_ptr<FrameWidget> m_frame;
};
