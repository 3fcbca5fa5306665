#include "Playground/Serving/CommandBridge.h"

#include <utility>

#include "Velko/Commands/Messages.h"

namespace velko::web {

using commands::Answer;
using commands::answerLines;
using commands::SocketServer;

CommandBridge::CommandBridge(Live& live) : live_(live) {}

CommandBridge::~CommandBridge() {
    if (server_) {
        server_->stop();
    }
}

std::expected<void, std::string> CommandBridge::open(const std::filesystem::path& file) {
    auto server = SocketServer::open(file);
    if (!server) {
        return std::unexpected(server.error());
    }
    server_ = *std::move(server);
    SocketServer& door = *server_;
    live_.setCallers(
        {.send = [&door](CommandDoor::Caller caller, const std::string& lines) { door.send(caller, lines); },
         .hangUp = [&door](CommandDoor::Caller caller) { door.hangUp(caller); }});
    door.start({.asked =
                    [this, &door](CommandDoor::Caller caller, const std::string& line) {
                        if (!live_.ask(caller, line)) {
                            door.send(caller, answerLines({.kind = Answer::Kind::error,
                                                           .text = "Velko does not run.\n"}) +
                                                  answerLines({.status = commands::status::failed}));
                            door.hangUp(caller);
                        }
                    },
                .left = [this](CommandDoor::Caller caller) { live_.leave(caller); }});
    return {};
}

}  // namespace velko::web
