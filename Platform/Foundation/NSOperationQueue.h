#pragma once

#include "Foundation/NSObject.h"

/// Where a notification's block runs. The program has the main thread alone, so a block of the main
/// queue runs at once, within the post.
class NSOperationQueue : public NSObject {
public:
    static NSOperationQueue& mainQueue() {
        static NSOperationQueue queue;
        return queue;
    }

private:
    NSOperationQueue() = default;
};
