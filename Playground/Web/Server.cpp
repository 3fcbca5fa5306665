#include "Playground/Web/Server.h"

#include <chrono>
#include <string_view>
#include <utility>

#include "Playground/Web/Files.h"
#include "Playground/Web/HttpStatus.h"

namespace velko::web {

namespace {

using std::chrono::steady_clock;

constexpr auto breath = std::chrono::milliseconds(500);  ///< between signs of life to a page

HttpAnswer line(int status, std::string_view text) {
    return {.status = status, .type = "text/plain; charset=utf-8", .content = std::string(text) + "\n"};
}

HttpAnswer page(int status, std::string content) {
    return {.status = status, .type = std::string(pageType), .content = std::move(content)};
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

/// What a page gets to read: what has changed, or now and then nothing much, which tells whether it is there.
class Breathing final {
 public:
    explicit Breathing(std::shared_ptr<Feed::Reader> reader) : reader_(std::move(reader)) {}

    std::optional<std::string> operator()() {
        const auto now = steady_clock::now();
        const auto message = reader_->next();
        if (!message && now - last_ < breath) {
            return std::nullopt;
        }
        last_ = now;
        return message ? eventText(*message) : ":\n\n";
    }

 private:
    std::shared_ptr<Feed::Reader> reader_;
    steady_clock::time_point last_ = steady_clock::now();
};

}  // namespace

std::optional<HttpAnswer> Server::refuse(const RequestHead& head) {
    const auto refusal = parts_.gate.refuse(head);
    if (!refusal) {
        return std::nullopt;
    }
    return head.path == pagePath && refusal->status == status::forbidden
               ? page(status::forbidden, lockedPage("This address lacks its token."))
               : line(refusal->status, refusal->reason);
}

HttpAnswer Server::answer(const RequestHead& head, const std::string& body) {
    if (head.method == "POST") {
        return perform(head, body);
    }
    if (head.path == pagePath) {
        return page(status::ok, pageWith(parts_.gate.token()));
    }
    if (head.path == ticketPath) {
        return redeem(head);
    }
    if (head.path == eventsPath) {
        return follow();
    }
    const File* file = fileAt(head.path);
    return {.type = std::string(file->type), .content = std::string(file->content)};
}

HttpAnswer Server::redeem(const RequestHead& head) {
    if (head.method != "GET" || !parts_.ticket.redeem(head.token)) {
        return page(status::forbidden, lockedPage("This address opens nothing any more."));
    }
    return {.status = status::seeOther, .location = withToken(pagePath, parts_.gate.token())};
}

HttpAnswer Server::perform(const RequestHead& head, const std::string& body) {
    const auto json = Json::parse(body);
    if (!json) {
        return line(status::badRequest, "That is no JSON.");
    }
    if (const Done done = parts_.live.act(head.path.substr(1), *json); !done) {
        // No fault of the page's, so no error: it tells the user.
        return line(status::ok, done.error());
    }
    return {.status = status::noContent};
}

HttpAnswer Server::follow() {
    auto reader = parts_.feed.subscribe();
    if (!reader) {
        return line(status::unavailable, "Too many pages are open.");
    }
    return {.type = "text/event-stream", .stream = Breathing(std::move(reader))};
}

}  // namespace velko::web
