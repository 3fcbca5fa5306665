#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Playground/Serving/Gate.h"
#include "Playground/Serving/Sockets.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// What a client gets.
struct HttpAnswer {
    /// Gives the next piece of a stream; nothing while there is none.
    using NextPiece = std::function<std::optional<std::string>()>;

    int status = status::ok;
    std::string type{};
    std::string content{};
    std::string location{};  ///< where to go on; empty for nowhere
    NextPiece stream{};      ///< instead of a content
};

/// Whoever answers requests. Called on the thread that runs the server.
class HttpHandler : private NonCopyable {
 public:
    HttpHandler() = default;
    virtual ~HttpHandler() = default;

    /// Once a request's head has come: an answer turns it away before its body has.
    [[nodiscard]] virtual std::optional<HttpAnswer> refuse(const RequestHead& head) = 0;
    /// Once all of it has come. The body has at most `Gate::longestBody` bytes.
    [[nodiscard]] virtual HttpAnswer answer(const RequestHead& head, const std::string& body) = 0;
};

/// Serves a port: one thread for everybody, one request for each connection. How long a head may be, how
/// long a request may take and how many may come at once is bounded, whatever clients do.
class Http final : private NonCopyable {
 public:
    /// Nothing is served yet. The handler outlives it. Null where the system has nothing left to give.
    [[nodiscard]] static std::unique_ptr<Http> on(ListeningPort port, HttpHandler& handler);
    ~Http();

    /// Serves until `stop`, and hangs up on everybody then.
    void run();
    /// From any thread, but not from a signal's handler.
    void stop();
    /// There may be something new for the streams. As `stop`.
    void wake();

 private:
    class Parts;
    explicit Http(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

}  // namespace velko::web
