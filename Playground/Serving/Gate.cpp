#include "Playground/Serving/Gate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <random>
#include <utility>

#include "Playground/Serving/Files.h"
#include "Playground/Web/Actions.h"

namespace velko::web {

namespace {

constexpr std::uint16_t usualPort = 80;  ///< a browser leaves this port out of an address
constexpr std::string_view scheme = "http://";
constexpr std::string_view needsToken = "Open the address that ./run has printed.";

/// The name of the action in a path; empty if it has none.
std::string_view actionOf(std::string_view path) {
    return path.starts_with('/') ? path.substr(1) : std::string_view();
}

std::optional<std::size_t> lengthOf(std::string_view text) {
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    const bool isNumber = !text.empty() && error == std::errc() && end == text.data() + text.size();
    return isNumber ? std::optional(length) : std::nullopt;
}

/// Compares in a time that does not tell how many characters are right.
bool isSame(std::string_view token, std::string_view ours) {
    unsigned difference = token.size() == ours.size() ? 0 : 1;
    for (std::size_t index = 0; index < std::min(token.size(), ours.size()); ++index) {
        difference |= static_cast<unsigned char>(token[index]) ^ static_cast<unsigned char>(ours[index]);
    }
    return difference == 0;
}

bool isJson(std::string_view contentType) {
    constexpr std::string_view json = "application/json";
    return contentType == json || contentType.starts_with("application/json;");
}

}  // namespace

Gate::Gate(std::uint16_t port, std::string token) : token_(std::move(token)) {
    for (const std::string host : {"127.0.0.1", "localhost"}) {
        hosts_.push_back(host + ":" + std::to_string(port));
        if (port == usualPort) {
            hosts_.push_back(host);
        }
    }
}

bool Gate::isOurHost(std::string_view host) const {
    return std::ranges::find(hosts_, host) != hosts_.end();
}

std::optional<Gate::Refusal> Gate::refuse(const RequestHead& request) const {
    if (request.hosts != 1 || !isOurHost(request.host)) {
        return Refusal{status::misdirected, "This server answers to its own address only."};
    }
    if (request.origin &&
        (!request.origin->starts_with(scheme) || !isOurHost(request.origin->substr(scheme.size())))) {
        return Refusal{status::forbidden, "Another page has no say here."};
    }
    if (request.hasRange) {
        return Refusal{status::badRequest, "There are no parts to be had."};
    }
    if (request.method == "POST") {
        return refusePost(request);
    }
    if (request.method != "GET" && request.method != "HEAD") {
        return Refusal{status::methodNotAllowed, "Only GET and POST."};
    }
    if (isAction(actionOf(request.path))) {
        return Refusal{status::methodNotAllowed, "Only a POST changes anything."};
    }
    if (request.path == pagePath || request.path == eventsPath) {
        return isSame(request.token, token_) ? std::nullopt
                                             : std::optional(Refusal{status::forbidden, needsToken});
    }
    return request.path == ticketPath || fileAt(request.path) != nullptr
               ? std::nullopt
               : std::optional(Refusal{status::notFound, "There is no such page."});
}

std::optional<Gate::Refusal> Gate::refusePost(const RequestHead& request) const {
    if (!isAction(actionOf(request.path))) {
        return Refusal{status::notFound, "There is no such action."};
    }
    if (!request.fetchSite.empty() && request.fetchSite != "same-origin") {
        return Refusal{status::forbidden, "Another page has no say here."};
    }
    if (!isSame(request.token, token_)) {
        return Refusal{status::forbidden, needsToken};
    }
    if (!isJson(request.contentType)) {
        return Refusal{status::unsupportedType, "JSON only."};
    }
    const auto length = lengthOf(request.contentLength);
    if (request.isChunked || !length) {
        return Refusal{status::lengthRequired, "Say how long it is."};
    }
    return *length <= longestBody ? std::nullopt
                                  : std::optional(Refusal{status::tooLarge, "That is too much."});
}

bool Ticket::redeem(std::string_view token) {
    if (token_.empty() || !isSame(token, token_)) {
        return false;
    }
    token_.clear();
    return true;
}

std::string makeToken() {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::size_t length = 32;
    std::random_device random;
    std::uniform_int_distribution<std::size_t> digit(0, digits.size() - 1);
    std::string token(length, '0');
    std::ranges::generate(token, [&] { return digits[digit(random)]; });
    return token;
}

}  // namespace velko::web
