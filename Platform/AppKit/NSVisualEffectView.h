#pragma once

#include "AppKit/NSView.h"

enum NSVisualEffectBlendingMode : NSInteger { NSVisualEffectBlendingModeBehindWindow = 0 };

enum NSVisualEffectMaterial : NSInteger { NSVisualEffectMaterialFullScreenUI = 15 };

enum NSVisualEffectState : NSInteger {
    NSVisualEffectStateFollowsWindowActiveState = 0,
    NSVisualEffectStateActive = 1,
};

/// A view that shows a blurred picture of what lies behind its window. There is one material, and
/// it looks alike in every state.
class NSVisualEffectView : public NSView {
public:
    using NSView::NSView;

    NSVisualEffectBlendingMode blendingMode() const { return m_blendingMode; }
    void setBlendingMode(NSVisualEffectBlendingMode mode) { m_blendingMode = mode; }

    NSVisualEffectMaterial material() const { return m_material; }
    void setMaterial(NSVisualEffectMaterial material) { m_material = material; }

    NSVisualEffectState state() const { return m_state; }
    void setState(NSVisualEffectState state) { m_state = state; }

private:
    NSVisualEffectBlendingMode m_blendingMode = NSVisualEffectBlendingModeBehindWindow;
    NSVisualEffectMaterial m_material = NSVisualEffectMaterialFullScreenUI;
    NSVisualEffectState m_state = NSVisualEffectStateFollowsWindowActiveState;
};
