#include <algorithm>
#include <array>
#include <string>

#include "Fuzz.h"
#include "Playground/Serving/Gate.h"

namespace {

using namespace velko;

constexpr std::string_view token = "0123456789abcdef0123456789abcdef";

/// The lines of the input, in the order of a request's parts; a part that is missing is empty.
std::array<std::string_view, 9> partsOf(std::string_view text) {
    std::array<std::string_view, 9> parts;
    for (std::string_view& part : parts) {
        const std::size_t end = text.find('\n');
        part = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return parts;
}

bool isOurs(std::string_view host) {
    return host == "127.0.0.1:8080" || host == "localhost:8080";
}

}  // namespace

/// Whoever gets in has asked our address, from our page or from none, and knows the token where anything is
/// shown or changed.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto parts = partsOf(fuzz::textOf(data, size));
    const std::string_view flags = parts[0];
    web::RequestHead head{.method = parts[1],
                          .path = parts[2],
                          .host = parts[3],
                          .hosts = static_cast<std::size_t>(std::ranges::count(flags, 'h')),
                          .fetchSite = parts[5],
                          .contentType = parts[6],
                          .contentLength = parts[7],
                          .isChunked = flags.contains('c'),
                          .hasRange = flags.contains('r'),
                          .token = parts[8]};
    if (flags.contains('o')) {
        head.origin = parts[4];
    }
    const web::Gate gate(8080, std::string(token));
    if (const auto refusal = gate.refuse(head)) {
        fuzz::require(refusal->status >= 400 && !refusal->reason.empty());
        return 0;
    }
    fuzz::require(head.hosts == 1 && isOurs(head.host));
    fuzz::require(!head.origin || (head.origin->starts_with("http://") && isOurs(head.origin->substr(7))));
    if (head.method == "POST") {
        const std::string_view length = head.contentLength;
        fuzz::require(head.token == token && !head.isChunked && !length.empty());
        fuzz::require(std::ranges::all_of(length, [](char c) { return c >= '0' && c <= '9'; }));
        const std::string_view digits = length.substr(std::min(length.find_first_not_of('0'), length.size()));
        fuzz::require(digits.size() < 10 && std::stoul("0" + std::string(digits)) <= web::Gate::longestBody);
    } else {
        fuzz::require(head.method == "GET" || head.method == "HEAD");
        fuzz::require(!head.path.contains(".."));
    }
    return 0;
}
