#pragma once

#include <filesystem>
#include <memory>

#include "Velko/Commands/SocketServer.h"
#include "Velko/Ports/CommandDoor.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// The door that is a socket in a folder of the user. A thread of its own serves it. Main thread.
class SocketDoor final : public CommandDoor {
 public:
    /// The main thread outlives the door.
    SocketDoor(MainThread& mainThread, std::filesystem::path file);
    ~SocketDoor() override;

    [[nodiscard]] std::expected<void, std::string> open(Handlers handlers) override;
    void close() override;
    void send(Caller caller, const std::string& lines) override;
    void hangUp(Caller caller) override;

 private:
    MainThread& mainThread_;
    std::filesystem::path file_;
    std::shared_ptr<const Handlers> handlers_;  ///< while the door is open; posted work holds it weakly
    std::unique_ptr<commands::SocketServer> server_;
};

}  // namespace velko
