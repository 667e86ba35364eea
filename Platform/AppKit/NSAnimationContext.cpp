#include "AppKit/NSAnimationContext.h"

#include <utility>

namespace {
NSAnimationContext* theGroup = nullptr;
}

NSAnimationContext& NSAnimationContext::currentContext() {
    static NSAnimationContext outside;
    return theGroup ? *theGroup : outside;
}

void NSAnimationContext::runAnimationGroup(
    const std::function<void(NSAnimationContext&)>& changes) {
    NSAnimationContext context;
    NSAnimationContext* const outer = std::exchange(theGroup, &context);
    changes(context);
    theGroup = outer;
}
