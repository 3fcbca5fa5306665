#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The status codes of HTTP that our answers use.
namespace velko::web::status {

inline constexpr int ok = 200;
inline constexpr int noContent = 204;
inline constexpr int seeOther = 303;
inline constexpr int badRequest = 400;
inline constexpr int forbidden = 403;
inline constexpr int notFound = 404;
inline constexpr int methodNotAllowed = 405;
inline constexpr int lengthRequired = 411;
inline constexpr int tooLarge = 413;
inline constexpr int unsupportedType = 415;
inline constexpr int misdirected = 421;
inline constexpr int unavailable = 503;

}  // namespace velko::web::status

namespace velko::web {

/// What a request says about itself. Nothing of it has been checked.
struct RequestHead {
    std::string_view method;
    std::string_view path;
    std::string_view host{};
    std::size_t hosts = 0;  ///< how many Host headers there are
    std::optional<std::string_view> origin{};
    std::string_view fetchSite{};  ///< how a browser describes the page that sends the request
    std::string_view contentType{};
    std::string_view contentLength{};
    bool isChunked = false;
    bool hasRange = false;  ///< whether it asks for a part of a file
    std::string_view token{};
};

/// Decides which requests may enter: those of our own page, and those of people who open it. Other users of
/// this machine can reach the port too, so everything that shows or changes something needs a secret, the
/// token.
class Gate final {
 public:
    static constexpr std::size_t longestBody = 512U << 10U;  ///< bytes

    /// `token` is part of the page's address. Our page sends it with each request.
    Gate(std::uint16_t port, std::string token);

    struct Refusal {
        int status = 0;
        std::string_view reason;
    };
    /// Why a request is refused; nothing if it may enter.
    [[nodiscard]] std::optional<Refusal> refuse(const RequestHead& request) const;

    [[nodiscard]] const std::string& token() const noexcept { return token_; }

 private:
    [[nodiscard]] bool isOurHost(std::string_view host) const;
    [[nodiscard]] std::optional<Refusal> refusePost(const RequestHead& request) const;

    std::vector<std::string> hosts_;  ///< the names of our address in Host headers
    std::string token_;
};

/// A token that nobody can guess.
[[nodiscard]] std::string makeToken();

/// A token that can be used once.
class Ticket final {
 public:
    explicit Ticket(std::string token) : token_(std::move(token)) {}

    /// Whether this is the right token and it has not been used before.
    [[nodiscard]] bool redeem(std::string_view token);

 private:
    std::string token_;  ///< empty after its use
};

}  // namespace velko::web
