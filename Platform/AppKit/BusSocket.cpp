#include "AppKit/BusSocket+Private.h"

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

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

bool ask(int socket, const Place& place) {
    constexpr char question[] = "\0AUTH\r\n";
    return ::connect(socket, reinterpret_cast<const sockaddr*>(&place.address), place.length) ==
               0 &&
           ::send(socket, question, sizeof question - 1, MSG_NOSIGNAL) >= 0;
}

} // namespace

int askBus(const std::string& address) {
    const auto place = placeOf(address);
    if (!place) {
        errno = EAFNOSUPPORT;
        return -1;
    }
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0 || ask(socket, *place)) return socket;
    const int error = errno;
    ::close(socket);
    errno = error;
    return -1;
}
