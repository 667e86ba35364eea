#include "AppDelegate.h"
#include "NoDestructor.h"

#include "AppKit/AppKit.h"

#include <memory>

// Set once.
NSApplication* app = nullptr;
NoDestructor<std::shared_ptr<AppDelegate>> delegate;

int main() {
    app = &NSApplication::sharedApplication();
    *delegate = std::make_shared<AppDelegate>();
    app->setDelegate(*delegate);
    app->setActivationPolicy(NSApplicationActivationPolicyAccessory);
    app->run();
    return 0;
}
