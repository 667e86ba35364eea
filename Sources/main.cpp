#include "AppDelegate.h"

#include "AppKit/AppKit.h"

#include <cstdlib>
#include <memory>

NSApplication* app = nullptr;
std::shared_ptr<AppDelegate> delegate;

int main() {
    app = &NSApplication::sharedApplication();
    delegate = std::make_shared<AppDelegate>();
    app->setDelegate(delegate);
    app->setActivationPolicy(NSApplicationActivationPolicyAccessory);
    app->run();
    std::quick_exit(EXIT_SUCCESS); // Nothing is torn down: all of it lives until the process ends.
}
