#include "WindowServer/Session.h"

#include "WindowServer/Wayland/WaylandSession.h"
#include "WindowServer/X11/X11Session.h"

#include <cstdlib>

namespace WindowServer {

namespace {
std::unique_ptr<Session> theSession;
}

bool Session::open() {
    if (theSession) return true;
    theSession = Wayland::WaylandSession::connect();
    const char* const platform = theSession ? "wayland" : "xcb";
    if (!theSession) theSession = X11Session::connect();
    // Whatever the user has chosen for other programs, the toolkit's windows and the covers have to
    // be on the same server.
    ::setenv("QT_QPA_PLATFORM", platform, true);
    return theSession != nullptr;
}

Session& Session::current() { return *theSession; }

void Session::install(std::unique_ptr<Session> session) { theSession = std::move(session); }

} // namespace WindowServer
