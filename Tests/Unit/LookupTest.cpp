// One process for each set of names: the program looks them up once in a process.
#include "HeadlessSession.h"

#include "AppKit/AppKit.h"
#include "WindowServerBlur.h"

#include <cstdint>
#include <cstdio>

namespace {

constexpr int32_t connection = 77;
int connections = 0;
struct {
    int calls = 0;
    int32_t connection = 0;
    uint32_t window = 0;
    int32_t radius = 0;
} cgs, sls;

template <class Server>
[[maybe_unused]] int32_t take(Server& server, int32_t from, uint32_t window, int32_t radius) {
    server = {server.calls + 1, from, window, radius};
    return ANSWER;
}

} // namespace

extern "C" {
#ifdef CONNECTION_CGS
int32_t CGSMainConnectionID() { return ++connections, connection; }
#endif
#ifdef CONNECTION_SLS
int32_t SLSMainConnectionID() { return ++connections, connection; }
#endif
#ifdef RADIUS_CGS
int32_t CGSSetWindowBackgroundBlurRadius(int32_t from, uint32_t window, int32_t radius) {
    return take(cgs, from, window, radius);
}
#endif
#ifdef RADIUS_SLS
int32_t SLSSetWindowBackgroundBlurRadius(int32_t from, uint32_t window, int32_t radius) {
    return take(sls, from, window, radius);
}
#endif
}

int main() {
    auto& session = WindowServer::HeadlessSession::install();
    NSApplication::sharedApplication();
    const auto makeWindow = [] {
        return NSWindow(CGRectMake(0, 0, 9, 9), NSWindowStyleMaskBorderless, NSBackingStoreBuffered,
                        false);
    };
    int failures = 0;
    const auto expect = [&](bool holds, const char* what) {
        failures += !holds;
        if (!holds) std::printf("Not so: %s\n", what);
    };
    const NSWindow window = makeWindow();
    for (int i = 0; i < 2; ++i)
        expect(WindowServerBlur::set(168, window) == EXPECTED, "the answer is the expected one");
    const auto& asked = cgs.calls ? cgs : sls; // The CGS name goes first.
    expect(cgs.calls == 0 || sls.calls == 0, "one of two is asked");
#ifdef RADIUS_CGS
    expect(sls.calls == 0, "the CGS name goes first");
#endif
    expect(connections == asked.calls, "the connection is asked for at every call");
    if (asked.calls > 0)
        expect(asked.calls == 2 && asked.connection == connection && asked.radius == 168 &&
                   asked.window == static_cast<uint32_t>(window.windowNumber()),
               "the connection, the window and the radius are passed on at every call");
    else
        expect(!EXPECTED, "nothing succeeds without a call");

    session.grantsNumbers = false;
    expect(!WindowServerBlur::set(168, makeWindow()), "a window without a number has no blur");
    expect(connections == asked.calls && asked.calls <= 2, "and none is asked for");
    return failures;
}
