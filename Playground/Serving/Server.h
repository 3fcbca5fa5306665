#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "Playground/Serving/Gate.h"
#include "Playground/Serving/Http.h"
#include "Playground/Web/Live.h"

namespace velko::web {

/// Answers the requests of the page: it sends what the feed has, and passes what the page posts to the
/// session.
class Server final : public HttpHandler {
 public:
    struct Parts {
        Gate gate;
        Ticket ticket;  ///< exchanged once for the address with the gate's token
        Feed& feed;
        Live& live;
    };
    /// The feed and the session must live longer than the server.
    explicit Server(Parts parts) : parts_(std::move(parts)) {}

    [[nodiscard]] std::optional<HttpAnswer> refuse(const RequestHead& head) override;
    [[nodiscard]] HttpAnswer answer(const RequestHead& head, const std::string& body) override;

 private:
    [[nodiscard]] HttpAnswer redeem(const RequestHead& head);
    [[nodiscard]] HttpAnswer perform(const RequestHead& head, const std::string& body);
    [[nodiscard]] HttpAnswer follow();

    Parts parts_;
};

struct ServeOptions {
    std::filesystem::path home;           ///< the folder that is kept between runs
    std::optional<std::uint16_t> port{};  ///< without one: any free port
    bool mayOpen = true;                  ///< whether to open the page, if there is a desktop
    std::filesystem::path caller{};       ///< the program that gives commands
};

/// The socket for commands, in a home folder.
[[nodiscard]] std::filesystem::path commandSocketIn(const std::filesystem::path& home);

/// Serves the page until a signal ends the program. Returns the exit status of the process.
[[nodiscard]] int serve(const ServeOptions& options);

}  // namespace velko::web
