#include "Velko/Commands/Sockets.h"

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace velko {

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

}  // namespace velko
