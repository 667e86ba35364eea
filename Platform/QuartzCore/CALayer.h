#pragma once

#include "CoreGraphics/CGColor.h"
#include "Foundation/NSObject.h"

class CALayer;

class CALayerDelegate {
public:
    virtual ~CALayerDelegate() = default;
    /// The layer's looks have changed.
    virtual void displayLayer(CALayer&) {}
};

/// The colour of a view.
class CALayer : public NSObject {
public:
    /// The delegate is not retained; it owns the layer.
    void setDelegate(CALayerDelegate* delegate) { m_delegate = delegate; }

    /// Clear until it is set.
    const CGColor& backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const CGColor& color);

private:
    CALayerDelegate* m_delegate = nullptr;
    CGColor m_backgroundColor;
};
