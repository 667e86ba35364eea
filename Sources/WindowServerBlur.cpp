#include "WindowServerBlur.h"

#include "AppKit/NSWindow.h"

#include <cstdint>
#include <initializer_list>

#include <dlfcn.h>

namespace {

using MainConnection = int32_t();
using SetBackgroundBlurRadius = int32_t(int32_t connection, uint32_t windowNumber, int32_t radius);

/// The running process with all that it has loaded.
void* handle() {
    static void* const process = dlopen(nullptr, RTLD_NOW);
    return process;
}

/// The first of the names that the process knows; null where it knows none.
template <typename Function> Function* lookup(std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (void* const symbol = dlsym(handle(), name)) return reinterpret_cast<Function*>(symbol);
    return nullptr;
}

MainConnection* connection() {
    static auto* const function =
        lookup<MainConnection>({"CGSMainConnectionID", "SLSMainConnectionID"});
    return function;
}

SetBackgroundBlurRadius* setRadius() {
    static auto* const function = lookup<SetBackgroundBlurRadius>(
        {"CGSSetWindowBackgroundBlurRadius", "SLSSetWindowBackgroundBlurRadius"});
    return function;
}

} // namespace

bool WindowServerBlur::set(int radius, const NSWindow& on) {
    if (!connection() || !setRadius()) return false;
    const NSInteger number = on.windowNumber();
    if (number < 1) return false;
    return setRadius()(connection()(), static_cast<uint32_t>(number), radius) == 0;
}
