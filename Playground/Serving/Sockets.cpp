#include "Playground/Serving/Sockets.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace velko::web {

namespace {

constexpr int backlog = 256;

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// The port that a socket has got. Nothing if it cannot have the wanted one; `errno` says why.
std::optional<std::uint16_t> listenOn(int socket, std::uint16_t wanted) {
    // This refuses a port that another program holds, but takes one that was given up a moment ago.
    constexpr int yes = 1;
    sockaddr_in address = loopback(wanted);
    socklen_t size = sizeof address;
    auto* const anyAddress = reinterpret_cast<sockaddr*>(&address);
    const bool listens = ::fcntl(socket, F_SETFD, FD_CLOEXEC) == 0 &&
                         ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes) == 0 &&
                         ::bind(socket, anyAddress, size) == 0 && ::listen(socket, backlog) == 0 &&
                         ::getsockname(socket, anyAddress, &size) == 0;
    return listens ? std::optional(ntohs(address.sin_port)) : std::nullopt;
}

}  // namespace

std::string whyNoPort(std::optional<std::uint16_t> wanted, int error) {
    if (wanted && error == EADDRINUSE) {
        return "Port " + std::to_string(*wanted) + " is taken.";
    }
    const std::string port =
        wanted ? "Port " + std::to_string(*wanted) + " can't be used: " : "No port is free: ";
    return port + std::generic_category().message(error) + ".";
}

std::expected<ListeningPort, std::string> ListeningPort::take(std::optional<std::uint16_t> wanted) {
    ListeningPort port(::socket(AF_INET, SOCK_STREAM, 0), 0);
    const auto number =
        port.socket_ == -1 ? std::nullopt : listenOn(port.socket_, wanted.value_or(std::uint16_t{0}));
    if (!number) {
        return std::unexpected(whyNoPort(wanted, errno));
    }
    port.number_ = *number;
    return port;
}

ListeningPort::ListeningPort(ListeningPort&& other) noexcept
    : socket_(std::exchange(other.socket_, -1)), number_(other.number_) {}

ListeningPort::~ListeningPort() {
    if (socket_ != -1) {
        ::close(socket_);
    }
}

}  // namespace velko::web
