// The window server's calls that programs look up by name at run time. Only the application links
// this unit, so a test can export names of its own.
#include "WindowServer/Session.h"

using WindowServer::Session;

namespace {
constexpr int32_t mainConnection = 1;
constexpr int32_t invalidConnection = 1002; // kCGErrorInvalidConnection
} // namespace

extern "C" {

__attribute__((visibility("default"))) int32_t CGSMainConnectionID() { return mainConnection; }

__attribute__((visibility("default"))) int32_t
CGSSetWindowBackgroundBlurRadius(int32_t connection, uint32_t windowNumber, int32_t radius) {
    if (connection != mainConnection) return invalidConnection;
    return Session::current().surfaces().setBackgroundBlurRadius(static_cast<int>(windowNumber),
                                                                 radius);
}
}
