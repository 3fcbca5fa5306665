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

/// Answers what the page asks for: it shows what the feed brings and hands what the page posts to the
/// session.
class Server final : public HttpHandler {
 public:
    struct Parts {
        Gate gate;
        Ticket ticket;  ///< leads to the address with the gate's token
        Feed& feed;
        Live& live;
    };
    /// The feed and the session outlive the server.
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
    std::optional<std::uint16_t> port{};  ///< left out: any that is free
    bool mayOpen = true;                  ///< whether to open the page where there is a desktop
};

/// Plays on a page until the program is interrupted. The process's exit status.
[[nodiscard]] int serve(const ServeOptions& options);

}  // namespace velko::web
