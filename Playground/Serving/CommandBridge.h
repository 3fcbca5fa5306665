#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <string>

#include "Playground/Web/Live.h"
#include "Velko/Commands/SocketServer.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// Brings those who come to a socket to the Velko of a session. The socket stays when that Velko quits: then
/// callers are told so.
class CommandBridge final : private NonCopyable {
 public:
    /// The session outlives the bridge, and ends before it.
    explicit CommandBridge(Live& live);
    ~CommandBridge();

    /// Begins to serve a socket. On failure one sentence says why.
    [[nodiscard]] std::expected<void, std::string> open(const std::filesystem::path& file);

 private:
    Live& live_;
    std::unique_ptr<commands::SocketServer> server_;
};

}  // namespace velko::web
