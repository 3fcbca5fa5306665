#include "Playground/Serving/HttpMessages.h"

#include <array>
#include <cstddef>
#include <microhttpd.h>
#include <optional>
#include <string_view>
#include <strings.h>
#include <utility>

namespace velko::web {

namespace {

constexpr auto policy =
    "default-src 'none'; script-src 'self'; style-src 'self'; style-src-attr 'unsafe-inline'; "
    "img-src 'self' data:; connect-src 'self'; base-uri 'none'; form-action 'none'; "
    "frame-ancestors 'none'";

using Header = std::pair<const char*, const char*>;

// Each connection has one request, so that a refused request leaves no bytes for the next one.
constexpr std::array usualHeaders{Header{"Connection", "close"},
                                  Header{"Content-Security-Policy", policy},
                                  Header{"X-Content-Type-Options", "nosniff"},
                                  Header{"X-Frame-Options", "DENY"},
                                  Header{"Referrer-Policy", "no-referrer"},
                                  Header{"Cross-Origin-Resource-Policy", "same-origin"},
                                  Header{"Cross-Origin-Opener-Policy", "same-origin"},
                                  Header{"Cache-Control", "no-store"}};

std::optional<std::string_view> valueOf(MHD_Connection* connection, MHD_ValueKind kind, const char* key) {
    const char* value = MHD_lookup_connection_value(connection, kind, key);
    return value == nullptr ? std::nullopt : std::optional<std::string_view>(value);
}

std::size_t countOfHosts(MHD_Connection* connection) {
    std::size_t count = 0;
    const auto countOne = [](void* context, MHD_ValueKind, const char* key, const char*) {
        if (::strcasecmp(key, "Host") == 0) {
            ++*static_cast<std::size_t*>(context);
        }
        return MHD_YES;
    };
    MHD_get_connection_values(connection, MHD_HEADER_KIND, countOne, &count);
    return count;
}

}  // namespace

RequestHead headOf(MHD_Connection* connection, const char* method, const char* path) {
    const auto header = [connection](const char* key) { return valueOf(connection, MHD_HEADER_KIND, key); };
    const bool isPost = std::string_view(method) == "POST";
    const auto token = isPost ? header("X-Velko-Token") : valueOf(connection, MHD_GET_ARGUMENT_KIND, "token");
    return {.method = method,
            .path = path,
            .host = header("Host").value_or(""),
            .hosts = countOfHosts(connection),
            .origin = header("Origin"),
            .fetchSite = header("Sec-Fetch-Site").value_or(""),
            .contentType = header("Content-Type").value_or(""),
            .contentLength = header("Content-Length").value_or(""),
            .isChunked = header("Transfer-Encoding").has_value(),
            .hasRange = header("Range").has_value(),
            .token = token.value_or("")};
}

void addHeaders(MHD_Response& response, const HttpAnswer& answer) {
    const auto add = [&](const char* name, const char* value) {
        MHD_add_response_header(&response, name, value);
    };
    for (const auto& [name, value] : usualHeaders) {
        add(name, value);
    }
    if (!answer.type.empty()) {
        add("Content-Type", answer.type.c_str());
    }
    if (!answer.location.empty()) {
        add("Location", answer.location.c_str());
    }
}

}  // namespace velko::web
