#pragma once

#include "AppKit/Qt/Windows/NativeWindow.h"
#include "WindowServer/Session.h"

/// A window that the window server draws: one colour, or one over a blurred picture.
class SurfaceWindow : public NativeWindow {
public:
    explicit SurfaceWindow(const NSWindow& window)
        : m_window(window), m_surface(WindowServer::Session::current().surfaces().makeSurface()) {}

    NSInteger number() const override { return m_surface->number(); }
    void setTitle(const std::string& title) override { m_surface->setTitle(title); }
    void setIdentifier(const std::string& identifier) override {
        m_surface->setIdentifier(identifier);
    }
    void setFrame(const NSRect& frame) override { m_surface->setFrame(frame); }
    void setLevel(NSInteger level) override { m_surface->setLevel(static_cast<int>(level)); }
    void setIgnoresMouseEvents(bool ignores) override { m_surface->setIgnoresMouseEvents(ignores); }
    void setAlpha(double alpha) override { m_surface->setAlpha(alpha); }
    void displayViews() override;
    void orderFront() override { m_surface->orderFront(); }
    void orderOut() override { m_surface->orderOut(); }

private:
    const NSWindow& m_window;
    const std::unique_ptr<WindowServer::Surface> m_surface;
};
