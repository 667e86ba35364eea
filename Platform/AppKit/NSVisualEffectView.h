#pragma once

#include "AppKit/NSView.h"

enum NSVisualEffectBlendingMode : NSInteger { NSVisualEffectBlendingModeBehindWindow = 0 };
enum NSVisualEffectMaterial : NSInteger { NSVisualEffectMaterialFullScreenUI = 15 };
enum NSVisualEffectState : NSInteger { NSVisualEffectStateActive = 1 };

/// A view that shows a blurred picture of what lies behind its window.
class NSVisualEffectView : public NSView {
public:
    using NSView::NSView;

    // Without effect: there is one material, and it looks alike in every state.
    void setBlendingMode(NSVisualEffectBlendingMode) {}
    void setMaterial(NSVisualEffectMaterial) {}
    void setState(NSVisualEffectState) {}
};
