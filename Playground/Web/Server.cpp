#include "Playground/Web/Server.h"

#include <chrono>
#include <httplib.h>
#include <string_view>
#include <sys/socket.h>
#include <thread>

#include "Playground/Web/Files.h"
#include "Playground/Web/Gate.h"

namespace velko::web {

namespace {

using httplib::Request;
using httplib::Response;

constexpr auto loopback = "127.0.0.1";
constexpr std::size_t threads = 24;
constexpr int readTimeout = 2;   ///< seconds for each piece of a request
constexpr int firstTimeout = 1;  ///< seconds that a connection may stay silent
constexpr int writeTimeout = 5;
constexpr int backlog = 256;
constexpr auto breath = std::chrono::milliseconds(500);  ///< between looks whether a page is still there
constexpr auto policy =
    "default-src 'none'; script-src 'self'; style-src 'self'; style-src-attr 'unsafe-inline'; "
    "img-src 'self' data:; connect-src 'self'; base-uri 'none'; form-action 'none'; "
    "frame-ancestors 'none'";

/// What the gate looks at, as views into a request that outlives them.
class Head final {
 public:
    explicit Head(const Request& request)
        : host_(request.get_header_value("Host")),
          origin_(request.get_header_value("Origin")),
          site_(request.get_header_value("Sec-Fetch-Site")),
          type_(request.get_header_value("Content-Type")),
          length_(request.get_header_value("Content-Length")),
          token_(request.path == eventsPath ? request.get_param_value("token")
                                            : request.get_header_value("X-Velko-Token")),
          head_{.method = request.method,
                .path = request.path,
                .host = host_,
                .hosts = request.get_header_value_count("Host"),
                .origin =
                    request.has_header("Origin") ? std::optional<std::string_view>(origin_) : std::nullopt,
                .fetchSite = site_,
                .contentType = type_,
                .contentLength = length_,
                .isChunked = request.has_header("Transfer-Encoding"),
                .hasRange = request.has_header("Range"),
                .token = token_} {}

    [[nodiscard]] const RequestHead& operator*() const noexcept { return head_; }

 private:
    std::string host_;
    std::string origin_;
    std::string site_;
    std::string type_;
    std::string length_;
    std::string token_;
    RequestHead head_;
};

void answer(Response& response, int status, std::string_view line) {
    response.status = status;
    response.set_content(std::string(line) + "\n", "text/plain; charset=utf-8");
}

/// An event as the stream carries it: each line of it is marked.
std::string eventText(const std::string& message) {
    std::string text = "data: ";
    for (const char character : message) {
        text += character;
        if (character == '\n') {
            text += "data: ";
        }
    }
    return text + "\n\n";
}

void sendHeaders(httplib::Server& server) {
    server.set_default_headers({{"Content-Security-Policy", policy},
                                {"X-Content-Type-Options", "nosniff"},
                                {"X-Frame-Options", "DENY"},
                                {"Referrer-Policy", "no-referrer"},
                                {"Cross-Origin-Resource-Policy", "same-origin"},
                                {"Cross-Origin-Opener-Policy", "same-origin"},
                                {"Cache-Control", "no-store"}});
}

}  // namespace

struct Server::Parts {
    httplib::Server http;
    std::optional<Gate> gate;
    std::string page;
    socket_t listening = INVALID_SOCKET;
};

Server::Server(Feed& feed) : feed_(feed), parts_(std::make_unique<Parts>()) {
    auto& http = parts_->http;
    http.new_task_queue = [] { return new httplib::ThreadPool(threads); };
    // A port that another program holds is refused; one that was just given up is not.
    http.set_socket_options([this](socket_t socket) {
        constexpr int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        parts_->listening = socket;
    });
    http.set_read_timeout(readTimeout);
    http.set_write_timeout(writeTimeout);
    // Every connection carries one request, so that a refused one can leave nothing behind in it.
    http.set_keep_alive_max_count(1);
    http.set_keep_alive_timeout(firstTimeout);
    http.set_payload_max_length(Gate::longestBody);
    http.set_tcp_nodelay(true);
    sendHeaders(http);
    http.set_pre_routing_handler([this](const Request& request, Response& response) {
        using Answer = httplib::Server::HandlerResponse;
        const auto refusal = parts_->gate->refuse(*Head(request));
        if (!refusal) {
            return Answer::Unhandled;
        }
        answer(response, refusal->status, refusal->reason);
        return Answer::Handled;
    });
    http.set_exception_handler([](const Request&, Response& response, const std::exception_ptr&) {
        answer(response, 500, "That went wrong.");
    });
    answerEvents();
    answerActions();
    answerPages();
}

Server::~Server() = default;

void Server::answerPages() {
    parts_->http.Get(".*", [this](const Request& request, Response& response) {
        const File* file = fileAt(request.path);
        if (file == nullptr) {
            return answer(response, 404, "There is no such page.");
        }
        const bool isPage = request.path == "/";
        response.set_content(isPage ? parts_->page : std::string(file->content), std::string(file->type));
    });
}

void Server::answerActions() {
    parts_->http.Post("/[a-z]+", [this](const Request& request, Response& response) {
        const auto body = Json::parse(request.body);
        if (!body) {
            return answer(response, 400, "That is no JSON.");
        }
        if (const Done done = live_->act(std::string_view(request.path).substr(1), *body); !done) {
            // No fault of the page's, so no error: it tells the user.
            return answer(response, 200, done.error());
        }
        response.status = 204;
    });
}

void Server::answerEvents() {
    parts_->http.Get(std::string(eventsPath), [this](const Request& request, Response& response) {
        if (request.method != "GET") {
            return;
        }
        auto reader = feed_.subscribe();
        if (!reader) {
            return answer(response, 503, "Too many pages are open.");
        }
        response.set_chunked_content_provider(
            "text/event-stream", [this, reader](std::size_t, httplib::DataSink& sink) {
                const auto message = reader->next(breath);
                if (feed_.isClosed() || !sink.is_writable()) {
                    return false;
                }
                const std::string text = message ? eventText(*message) : ":\n\n";
                return sink.write(text.data(), text.size());
            });
    });
}

std::expected<std::uint16_t, std::string> Server::bind(std::optional<std::uint16_t> port) {
    auto& http = parts_->http;
    const int bound =
        port ? (http.bind_to_port(loopback, *port) ? *port : -1) : http.bind_to_any_port(loopback);
    if (bound <= 0) {
        return std::unexpected(port ? "Port " + std::to_string(*port) + " is taken." : "No port is free.");
    }
    // The library queues five connections; a page and a crowd at the door need more.
    ::listen(parts_->listening, backlog);
    const auto number = static_cast<std::uint16_t>(bound);
    const Gate& gate = parts_->gate.emplace(number, makeToken());
    parts_->page = pageWith(gate.token());
    return number;
}

void Server::run(Live& live) {
    live_ = &live;
    parts_->http.listen_after_bind();
}

void Server::stop() {
    feed_.close();
    // The library forgets a stop that comes before it has begun.
    constexpr int patience = 1000;
    for (int tries = 0; tries < patience && !parts_->http.is_running(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    parts_->http.stop();
}

}  // namespace velko::web
