#include <unistd.h>

#include "Velko/Commands/SocketFile.h"

namespace velko::commands {

std::optional<uid_t> peerUser(const Socket& socket) {
    uid_t user = 0;
    gid_t group = 0;
    return ::getpeereid(socket.number(), &user, &group) == 0 ? std::optional(user) : std::nullopt;
}

}  // namespace velko::commands
