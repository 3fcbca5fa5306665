#include <sys/socket.h>

#include "Velko/Commands/SocketFile.h"

namespace velko::commands {

std::optional<uid_t> peerUser(const Socket& socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    const bool isKnown = ::getsockopt(socket.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0;
    return isKnown && size == sizeof peer ? std::optional(peer.uid) : std::nullopt;
}

}  // namespace velko::commands
