#pragma once

#include "AppKit/Qt/Windows/NativeWindow.h"

namespace WindowServer {
class Surface;
}

/// A window that the window server draws: one colour, or one over a blurred picture.
class SurfaceWindow : public NativeWindow {
public:
    explicit SurfaceWindow(const NSWindow& window);
    ~SurfaceWindow() override;

    NSInteger number() const override;
    void setTitle(const std::string& title) override;
    void setIdentifier(const std::string& identifier) override;
    void setFrame(const NSRect& frame) override;
    void setLevel(NSInteger level) override;
    void setIgnoresMouseEvents(bool ignores) override;
    void setAlpha(double alpha) override;
    void displayViews() override;
    void orderFront() override;
    void orderOut() override;

private:
    const NSWindow& m_window;
    const std::unique_ptr<WindowServer::Surface> m_surface;
};
