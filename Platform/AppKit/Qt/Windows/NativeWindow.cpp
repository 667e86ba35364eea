#include "AppKit/Qt/Windows/NativeWindow.h"

#include "AppKit/Qt/Panels/PanelWindow.h"
#include "AppKit/Qt/Windows/FloatingWindow.h"
#include "AppKit/Qt/Windows/SurfaceWindow.h"

std::shared_ptr<NativeWindow> NativeWindow::make(NSWindow& window) {
    if (window.contentViewController()) {
        if (FloatingWindow::suits(window)) return std::make_shared<FloatingWindow>(window);
        return std::make_shared<ContentWindow>(window);
    }
    if (window.styleMask() & NSWindowStyleMaskNonactivatingPanel) return PanelWindow::make(window);
    return std::make_shared<SurfaceWindow>(window);
}

NativeWindow& NativeWindow::renew(NSWindow& window) {
    window.m_native = make(window);
    return *window.m_native;
}
