#include "AppKit/SessionBus+Private.h"

#include "AppKit/BusSocket+Private.h"

#include <cerrno>
#include <cstdlib>
#include <string>

#include <poll.h>
#include <unistd.h>

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr int patience = 2000; // In milliseconds. A bus in health answers within one.

bool isSilent(const std::string& address) {
    const int socket = askBus(address);
    // Who is refused at once need not wait; a full queue is another case.
    if (socket < 0) return errno == EAGAIN;
    pollfd answer{socket, POLLIN, 0};
    const bool silent = ::poll(&answer, 1, patience) == 0;
    ::close(socket);
    return silent;
}

} // namespace

void settleSessionBus() {
    const char* named = std::getenv(variable);
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string folder = runtime ? runtime : "/run/user/" + std::to_string(::getuid());
    // Left without a name, the bus library would start a new bus.
    std::string address = named ? named : "unix:path=" + folder + "/bus";
    if (isSilent(address)) address = "unix:path=/nonexistent";
    ::setenv(variable, address.c_str(), true);
}
