#pragma once

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string>

#include "Playground/Web/Feed.h"
#include "Playground/Web/Live.h"

namespace velko::web {

/// Serves the page on the loopback address. It shows what the feed brings and hands what the page posts to
/// the session.
class Server final {
 public:
    /// The feed outlives the server.
    explicit Server(Feed& feed);
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    ~Server();

    /// Takes the port, or any free one; the one that it took, or one line that says why it could not.
    [[nodiscard]] std::expected<std::uint16_t, std::string> bind(std::optional<std::uint16_t> port);

    /// Serves until `stop`. After `bind`; whoever came since then has waited.
    void run(Live& live);
    /// From any thread, but not from a signal's handler.
    void stop();

 private:
    struct Parts;

    void answerPages();
    void answerActions();
    void answerEvents();

    Feed& feed_;
    Live* live_ = nullptr;  ///< while it runs
    std::unique_ptr<Parts> parts_;
};

}  // namespace velko::web
