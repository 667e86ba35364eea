#include "AppKit/SessionBus+Private.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr int patience = 2000; // In milliseconds. A bus in health answers within one.

/// What stands between the key and the next comma.
std::optional<std::string> valueOf(const std::string& address, std::string_view key) {
    const size_t found = address.find(key);
    if (found == std::string::npos) return {};
    const size_t begin = found + key.size();
    return address.substr(begin, address.find_first_of(",;", begin) - begin);
}

struct Place {
    sockaddr_un address{AF_UNIX, {}};
    socklen_t length = 0;
};

/// Absent for a bus that is not reached through a socket of this machine.
std::optional<Place> placeOf(const std::string& address) {
    const auto path = valueOf(address, "unix:path=");
    const auto name = valueOf(address, "unix:abstract=");
    if (!path && !name) return {};
    const std::string text = path ? *path : '\0' + *name;
    Place place;
    if (text.size() >= sizeof place.address.sun_path) return {};
    std::memcpy(place.address.sun_path, text.data(), text.size());
    // The end of a path counts, that of an abstract name does not.
    place.length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size() + (path ? 1 : 0));
    return place;
}

/// Whether whoever listens there says anything to a client that asks how to log in.
bool answers(int socket, const Place& place) {
    constexpr char question[] = "\0AUTH\r\n";
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&place.address), place.length) != 0)
        return errno !=
               EAGAIN; // Who is refused at once need not wait; a full queue is another case.
    if (::send(socket, question, sizeof question - 1, MSG_NOSIGNAL) < 0) return true;
    pollfd answer{socket, POLLIN, 0};
    return ::poll(&answer, 1, patience) != 0;
}

bool isSilent(const std::string& address) {
    const auto place = placeOf(address);
    if (!place) return false;
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) return false;
    const bool silent = !answers(socket, *place);
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
