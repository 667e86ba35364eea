// One process for each set of names: the program looks them up once in a process.
#include "AppKit/AppKit.h"
#include "WindowServer/HeadlessSession.h"
#include "WindowServerBlur.h"

#include <cstdint>
#include <cstdio>

namespace {
constexpr int32_t connection = 77;
int connections = 0;
int cgsCalls = 0;
int slsCalls = 0;
struct {
    int32_t connection = 0;
    uint32_t window = 0;
    int32_t radius = 0;
} received;

[[maybe_unused]] int32_t connect() {
    ++connections;
    return connection;
}

[[maybe_unused]] int32_t take(int& calls, int32_t from, uint32_t window, int32_t radius) {
    ++calls;
    received = {from, window, radius};
    return ANSWER;
}
} // namespace

#if defined(CONNECTION_BOTH)
#define CONNECTION_CGS
#define CONNECTION_SLS
#endif
#if defined(RADIUS_BOTH)
#define RADIUS_CGS
#define RADIUS_SLS
#endif

extern "C" {
#ifdef CONNECTION_CGS
int32_t CGSMainConnectionID() { return connect(); }
#endif
#ifdef CONNECTION_SLS
int32_t SLSMainConnectionID() { return connect(); }
#endif
#ifdef RADIUS_CGS
int32_t CGSSetWindowBackgroundBlurRadius(int32_t from, uint32_t window, int32_t radius) {
    return take(cgsCalls, from, window, radius);
}
#endif
#ifdef RADIUS_SLS
int32_t SLSSetWindowBackgroundBlurRadius(int32_t from, uint32_t window, int32_t radius) {
    return take(slsCalls, from, window, radius);
}
#endif
}

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    ++failures;
    std::printf("Not so: %s\n", what);
}

} // namespace

int main() {
    NSApplication::sharedApplication();
    auto& session = static_cast<WindowServer::HeadlessSession&>(WindowServer::Session::current());
    const NSWindow window(CGRectMake(0, 0, 9, 9), NSWindowStyleMaskBorderless,
                          NSBackingStoreBuffered, false);

    expect(WindowServerBlur::set(168, window) == EXPECTED, "the answer is the expected one");
    expect(WindowServerBlur::set(168, window) == EXPECTED, "the second answer is like the first");

    const int calls = cgsCalls + slsCalls;
    expect(connections == calls, "the connection is asked for at every call, and for no other");
    if (calls > 0) {
        expect(calls == 2, "every radius reaches the window server");
        expect(received.connection == connection, "the connection is passed on");
        expect(received.window == static_cast<uint32_t>(window.windowNumber()), "the window too");
        expect(received.radius == 168, "the radius too");
#ifdef RADIUS_CGS
        expect(slsCalls == 0, "the CGS name goes first");
#endif
    } else {
        expect(!EXPECTED, "nothing succeeds without a call");
    }

    session.grantsNumbers = false;
    const NSWindow refused(CGRectMake(0, 0, 9, 9), NSWindowStyleMaskBorderless,
                           NSBackingStoreBuffered, false);
    expect(!WindowServerBlur::set(168, refused), "a window without a number has no blur");
    expect(cgsCalls + slsCalls == calls, "and the window server is not asked for one");
    return failures == 0 ? 0 : 1;
}
