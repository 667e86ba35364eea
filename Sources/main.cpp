#include "AppDelegate.h"

#include "AppKit/AppKit.h"

#include <memory>

// Made once and kept until the process ends, so never destroyed, whatever it is that ends it.
NSApplication* app = nullptr;
auto& delegate = *new std::shared_ptr<AppDelegate>;

int main() {
    app = &NSApplication::sharedApplication();
    delegate = std::make_shared<AppDelegate>();
    app->setDelegate(delegate);
    app->setActivationPolicy(NSApplicationActivationPolicyAccessory);
    app->run();
    return 0;
}
