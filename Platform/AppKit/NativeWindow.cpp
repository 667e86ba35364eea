#include "AppKit/NativeWindow+Private.h"

#include "AppKit/PanelWindow+Private.h"
#include "AppKit/SurfaceWindow+Private.h"

std::unique_ptr<NativeWindow> NativeWindow::make(NSWindow& window, NSUInteger styleMask) {
    if (styleMask & NSWindowStyleMaskNonactivatingPanel)
        return std::make_unique<PanelWindow>(window);
    return std::make_unique<SurfaceWindow>(window);
}
