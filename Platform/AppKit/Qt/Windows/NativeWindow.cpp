#include "AppKit/Qt/Windows/NativeWindow.h"

#include "AppKit/Qt/Windows/ContentWindow.h"

using WindowServer::Look;

namespace {

/// The list outlives every window.
std::vector<NativeWindow*>& windows() {
    static auto* const all = new std::vector<NativeWindow*>;
    return *all;
}

/// Adds a view and what stands in front of it to `look`. Each fills the window.
void lay(const NSView& view, Look& look) {
    if (view.isHidden()) return;
    if (dynamic_cast<const NSVisualEffectView*>(&view))
        look = {.material = true, .overlay = {}}; // It hides all that lies behind.
    if (view.layer() && view.layer()->backgroundColor().alpha > 0)
        look.overlay = view.layer()->backgroundColor();
    for (const auto& subview : view.subviews())
        lay(*subview, look);
}

/// A window that the window server draws: one colour, or one over a blurred picture.
class SurfaceWindow : public NativeWindow {
public:
    explicit SurfaceWindow(const NSWindow& window)
        : m_window(window), m_surface(WindowServer::Session::current().surfaces().makeSurface()) {}
    NSInteger number() const override { return m_surface->number(); }
    void describe() override {
        m_surface->setTitle(m_window.title());
        m_surface->setIdentifier(m_window.identifier());
    }
    void setFrame(const NSRect& frame) override { m_surface->setFrame(frame); }
    void setLevel(NSInteger level) override { m_surface->setLevel(static_cast<int>(level)); }
    void setAlpha(double alpha) override { m_surface->setAlpha(alpha); }

    void displayViews() override {
        Look look;
        if (m_window.contentView()) lay(*m_window.contentView(), look);
        m_surface->setLook(look);
    }

    void orderFront() override { m_surface->orderFront(); }
    void orderOut() override { m_surface->orderOut(); }

private:
    const NSWindow& m_window;
    const std::unique_ptr<WindowServer::Surface> m_surface;
};

} // namespace

std::shared_ptr<NativeWindow> NativeWindow::make(NSWindow& window) {
    if (window.contentViewController()) {
        if (ContentWindow::floats(window)) return makeFloatingWindow(window);
        return std::make_shared<ContentWindow>(window);
    }
    if (window.styleMask() & NSWindowStyleMaskNonactivatingPanel) return makePanelWindow(window);
    return std::make_shared<SurfaceWindow>(window);
}

std::vector<NativeWindow*> NativeWindow::all() { return windows(); }

NativeWindow::NativeWindow() { windows().push_back(this); }

NativeWindow::~NativeWindow() { std::erase(windows(), this); }

NativeWindow& NativeWindow::renew(NSWindow& window) {
    window.m_native = make(window);
    return *window.m_native;
}
