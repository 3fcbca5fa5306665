#include "Playground/Web/Waiting.h"

namespace velko::web {

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
