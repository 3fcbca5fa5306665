#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The status codes of HTTP that answers carry.
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

/// What a request says of itself, before anything of it is believed.
struct RequestHead {
    std::string_view method;
    std::string_view path;
    std::string_view host{};
    std::size_t hosts = 0;  ///< how many Host headers there are
    std::optional<std::string_view> origin{};
    std::string_view fetchSite{};  ///< of a browser: who made the page that asks
    std::string_view contentType{};
    std::string_view contentLength{};
    bool isChunked = false;
    bool hasRange = false;  ///< whether it asks for parts
    std::string_view token{};
};

/// Decides which requests are let in: those of our own page, and of people who open it. Other users of this
/// machine reach the port as well, so all that shows or changes anything asks for a secret, the token.
class Gate final {
 public:
    static constexpr std::size_t longestBody = 512U << 10U;  ///< bytes

    /// `token` is what the page's address carries, and our page with everything that it asks for.
    Gate(std::uint16_t port, std::string token);

    struct Refusal {
        int status = 0;
        std::string_view reason;
    };
    /// Why a request is turned away; nothing when it may enter.
    [[nodiscard]] std::optional<Refusal> refuse(const RequestHead& request) const;

    [[nodiscard]] const std::string& token() const noexcept { return token_; }

 private:
    [[nodiscard]] bool isOurHost(std::string_view host) const;
    [[nodiscard]] std::optional<Refusal> refusePost(const RequestHead& request) const;

    std::vector<std::string> hosts_;  ///< our address, as Host headers name it
    std::string token_;
};

/// A token that nobody can guess.
[[nodiscard]] std::string makeToken();

/// A token that is good for one time.
class Ticket final {
 public:
    explicit Ticket(std::string token) : token_(std::move(token)) {}

    /// Whether this is the token, shown for the first time.
    [[nodiscard]] bool redeem(std::string_view token);

 private:
    std::string token_;  ///< empty once it is used up
};

}  // namespace velko::web
