#include "Velko/Commands/SocketDoor.h"

#include <csignal>
#include <utility>

namespace velko {

SocketDoor::SocketDoor(MainThread& mainThread, std::filesystem::path file)
    : mainThread_(mainThread), file_(std::move(file)) {}

SocketDoor::~SocketDoor() {
    close();
}

std::expected<void, std::string> SocketDoor::open(Handlers handlers) {
    close();
    std::signal(SIGPIPE, SIG_IGN);  // a caller that hangs up must not end the program
    auto server = commands::SocketServer::open(file_);
    if (!server) {
        return std::unexpected(server.error());
    }
    server_ = *std::move(server);
    handlers_ = std::make_shared<const Handlers>(std::move(handlers));
    const auto tell = [&thread = mainThread_, weak = std::weak_ptr(handlers_)](const auto& told) {
        thread.post([told, weak] {
            if (const auto open = weak.lock()) {
                told(*open);
            }
        });
    };
    server_->start(
        {.asked =
             [tell](Caller caller, const std::string& line) {
                 tell([caller, line](const Handlers& open) { open.asked(caller, line); });
             },
         .left = [tell](Caller caller) { tell([caller](const Handlers& open) { open.left(caller); }); }});
    return {};
}

void SocketDoor::close() {
    server_.reset();
    handlers_.reset();
}

void SocketDoor::send(Caller caller, const std::string& lines) {
    if (server_) {
        server_->send(caller, lines);
    }
}

void SocketDoor::hangUp(Caller caller) {
    if (server_) {
        server_->hangUp(caller);
    }
}

}  // namespace velko
