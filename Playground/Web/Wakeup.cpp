#include "Playground/Web/Wakeup.h"

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace velko::web {

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
    // A full pipe rings already.
    static_cast<void>(!::write(writer_, "", 1));
}

void Wakeup::clear() const noexcept {
    std::array<char, 256> rung{};
    while (::read(reader_, rung.data(), rung.size()) > 0) {
    }
}

}  // namespace velko::web
