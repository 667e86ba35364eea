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
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    if (platform && std::string_view(platform).starts_with("offscreen"))
        theSession = std::make_unique<HeadlessSession>();
    else
        theSession = X11Session::connect();
    return theSession != nullptr;
}

Session& Session::current() { return *theSession; }

void Session::install(std::unique_ptr<Session> session) { theSession = std::move(session); }

} // namespace WindowServer
