#include "Playground/Serving/Sockets.h"

#include <arpa/inet.h>
#include <array>
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

Wakeup::Wakeup() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) == 0) {
        reader_ = ends[0];
        writer_ = ends[1];
        for (const int end : ends) {
            ::fcntl(end, F_SETFD, FD_CLOEXEC);
            ::fcntl(end, F_SETFL, O_NONBLOCK);
        }
    }
}

Wakeup::~Wakeup() {
    if (works()) {
        ::close(reader_);
        ::close(writer_);
    }
}

void Wakeup::ring() const noexcept {
    // If the pipe is full, the other thread wakes anyway.
    static_cast<void>(!::write(writer_, "", 1));
}

void Wakeup::clear() const noexcept {
    std::array<char, 256> rung{};
    while (::read(reader_, rung.data(), rung.size()) > 0) {
    }
}

void Waiting::leave(int socket) {
    std::erase_if(guests_, [socket](const Guest& guest) { return guest.socket == socket; });
}

std::vector<int> Waiting::overdue(Time now) const {
    const std::size_t tooMany = guests_.size() > most ? guests_.size() - most : 0;
    std::vector<int> sockets;
    for (std::size_t index = 0; index < guests_.size(); ++index) {
        if (index < tooMany || now - guests_[index].since >= patience) {
            sockets.push_back(guests_[index].socket);
        }
    }
    return sockets;
}

}  // namespace velko::web
