#pragma once

#include "Foundation/NSGeometry.h"
#include "Foundation/NSObjCRuntime.h"
#include "Foundation/NSObject.h"

class NSView;

enum NSTrackingAreaOptions : NSUInteger {
    NSTrackingMouseEnteredAndExited = 0x1,
    NSTrackingActiveAlways = 0x80,
    NSTrackingInVisibleRect = 0x200,
};

/// Makes a view hear of the pointer. The whole view counts, whatever the rectangle: the one kind of
/// area there is follows what is visible of it.
class NSTrackingArea : public NSObject {
public:
    /// The owner hears of the pointer. It is not retained, and outlives the area as a rule because
    /// the area is its own.
    NSTrackingArea(const NSRect&, NSUInteger options, NSView* owner, const id& /*userInfo*/)
        : m_options(options), m_owner(owner) {}

    NSUInteger options() const { return m_options; }
    NSView* owner() const { return m_owner; }

private:
    NSUInteger m_options;
    NSView* m_owner;
};
