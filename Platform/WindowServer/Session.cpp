#include "WindowServer/Session.h"

#include "WindowServer/Shell/ShellSession.h"
#include "WindowServer/Wayland/WaylandSession.h"

#include <cstdlib>

namespace WindowServer {

namespace {

std::unique_ptr<Session> theSession;

/// Null where no server answers.
std::unique_ptr<Session> openOnX11() {
    auto server = Connection::open();
    if (!server) return nullptr;
    if (server->isXwayland()) return std::make_unique<ShellSession>(std::move(server));
    return std::make_unique<X11Session>(std::move(server));
}

} // namespace

bool Session::open() {
    if (theSession) return true;
    theSession = Wayland::WaylandSession::connect();
    const char* const platform = theSession ? "wayland" : "xcb";
    if (!theSession) theSession = openOnX11();
    // Whatever the user has chosen for other programs, the toolkit's windows and the covers have to
    // be on the same server.
    ::setenv("QT_QPA_PLATFORM", platform, true);
    return theSession != nullptr;
}

Session& Session::current() { return *theSession; }

void Session::install(std::unique_ptr<Session> session) { theSession = std::move(session); }

} // namespace WindowServer
