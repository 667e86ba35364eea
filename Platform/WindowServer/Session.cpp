#include "WindowServer/Session.h"

#include "WindowServer/HeadlessSession.h"
#include "WindowServer/X11/X11Session.h"

#include <cstdlib>
#include <string_view>

namespace WindowServer {

namespace {
std::unique_ptr<Session> theSession;
}

bool Session::open() {
    constexpr const char* variable = "QT_QPA_PLATFORM";
    const char* platform = std::getenv(variable);
    if (platform && std::string_view(platform).starts_with("offscreen")) {
        theSession = std::make_unique<HeadlessSession>();
    } else {
        theSession = X11Session::connect();
        // Whatever the user has chosen for other programs, the toolkit's windows and the covers
        // have to be on the same server.
        ::setenv(variable, "xcb", true);
    }
    return theSession != nullptr;
}

Session& Session::current() { return *theSession; }

void Session::install(std::unique_ptr<Session> session) { theSession = std::move(session); }

} // namespace WindowServer
