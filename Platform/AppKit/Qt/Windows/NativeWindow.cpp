#include "AppKit/Qt/Windows/NativeWindow.h"

#include "AppKit/Qt/Panels/PanelWindow.h"
#include "AppKit/Qt/Windows/SurfaceWindow.h"

std::unique_ptr<NativeWindow> NativeWindow::make(NSWindow& window, NSUInteger styleMask) {
    if (styleMask & NSWindowStyleMaskNonactivatingPanel)
        return std::make_unique<PanelWindow>(window);
    return std::make_unique<SurfaceWindow>(window);
}
