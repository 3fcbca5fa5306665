#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Playground/Serving/Gate.h"
#include "Playground/Serving/Sockets.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// What we answer a client.
struct HttpAnswer {
    /// Gives the next piece of a stream; nothing if there is none yet.
    using NextPiece = std::function<std::optional<std::string>()>;

    int status = status::ok;
    std::string type{};
    std::string content{};
    std::string location{};  ///< the address that the client shall open next; may be empty
    NextPiece stream{};      ///< takes the place of `content`
};

/// Answers requests. It is called on the thread that runs the server.
class HttpHandler : private NonCopyable {
 public:
    HttpHandler() = default;
    virtual ~HttpHandler() = default;

    /// Called when the head of a request has arrived. With an answer the request is refused, and its body is
    /// not read.
    [[nodiscard]] virtual std::optional<HttpAnswer> refuse(const RequestHead& head) = 0;
    /// Called when the whole request has arrived. The body has at most `Gate::longestBody` bytes.
    [[nodiscard]] virtual HttpAnswer answer(const RequestHead& head, const std::string& body) = 0;
};

/// Serves a port, with one thread for all clients and one request for each connection. There are limits for
/// the length of a head, for the time that a request takes and for the number of requests at once, whatever
/// clients do.
class Http final : private NonCopyable {
 public:
    /// Does not serve yet. The handler must live longer. Null if the system has no resources left.
    [[nodiscard]] static std::unique_ptr<Http> on(ListeningPort port, HttpHandler& handler);
    ~Http();

    /// Serves until `stop`, then closes all connections.
    void run();
    /// Any thread, but not from the handler of a signal.
    void stop();
    /// Says that the streams may have something new to send. May be called where `stop` may.
    void wake();

 private:
    class Parts;
    explicit Http(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

}  // namespace velko::web
