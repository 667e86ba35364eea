// The platform's numbers, as they are known to every program written for it.
#include "AppKit/AppKit.h"
#include "ServiceManagement/ServiceManagement.h"

static_assert(NSApplicationActivationPolicyAccessory == 1);
static_assert(NSApplicationActivationPolicyRegular == 0);
static_assert(NSBackingStoreBuffered == 2);
static_assert(NSCompositingOperationSourceAtop == 5);
static_assert(NSEventMaskLeftMouseUp == 0x4);
static_assert(NSEventMaskRightMouseUp == 0x10);
static_assert(NSEventModifierFlagControl == 0x40000);
static_assert(NSEventTypeLeftMouseDown == 1);
static_assert(NSEventTypeLeftMouseDragged == 6);
static_assert(NSEventTypeLeftMouseUp == 2);
static_assert(NSEventTypeMouseEntered == 8);
static_assert(NSEventTypeMouseExited == 9);
static_assert(NSEventTypeRightMouseDown == 3);
static_assert(NSEventTypeRightMouseUp == 4);
static_assert(NSFloatingWindowLevel == 3);
static_assert(NSFontWeightSemibold == 0.3);
static_assert(NSNormalWindowLevel == 0);
static_assert(NSScreenSaverWindowLevel == 1000);
static_assert(NSSquareStatusItemLength == -2.0);
static_assert(NSTrackingActiveAlways == 0x80);
static_assert(NSTrackingInVisibleRect == 0x200);
static_assert(NSTrackingMouseEnteredAndExited == 0x1);
static_assert(NSViewHeightSizable == 0x10);
static_assert(NSViewNotSizable == 0);
static_assert(NSViewWidthSizable == 0x2);
static_assert(NSVisualEffectBlendingModeBehindWindow == 0);
static_assert(NSVisualEffectMaterialFullScreenUI == 15);
static_assert(NSVisualEffectStateActive == 1);
static_assert(NSVisualEffectStateFollowsWindowActiveState == 0);
static_assert(NSWindowAbove == 1);
static_assert(NSWindowAnimationBehaviorDefault == 0);
static_assert(NSWindowAnimationBehaviorNone == 2);
static_assert(NSWindowBelow == -1);
static_assert(NSWindowCollectionBehaviorCanJoinAllSpaces == 1);
static_assert(NSWindowCollectionBehaviorFullScreenAuxiliary == 256);
static_assert(NSWindowCollectionBehaviorIgnoresCycle == 64);
static_assert(NSWindowCollectionBehaviorStationary == 16);
static_assert(NSWindowStyleMaskBorderless == 0);
static_assert(NSWindowStyleMaskNonactivatingPanel == 0x80);
static_assert(SMAppServiceStatusEnabled == 1);
static_assert(SMAppServiceStatusNotFound == 3);
static_assert(SMAppServiceStatusNotRegistered == 0);
static_assert(SMAppServiceStatusRequiresApproval == 2);
static_assert(kSMErrorInternalFailure == 2);
