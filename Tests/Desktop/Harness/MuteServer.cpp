#include "Harness/MuteServer.h"

#include <stdexcept>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace Harness {

MuteServer::MuteServer() : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{AF_UNIX, {}};
    path().copy(address.sun_path, sizeof address.sun_path - 1);
    if (::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(m_socket, 5) != 0)
        throw std::runtime_error("cannot listen at " + path());
}

MuteServer::~MuteServer() { ::close(m_socket); }

bool MuteServer::wasCalled() const {
    pollfd caller{m_socket, POLLIN, 0};
    return ::poll(&caller, 1, 0) == 1;
}

} // namespace Harness
