#include "Playground/Serving/Http.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <map>
#include <microhttpd.h>
#include <string_view>
#include <sys/select.h>
#include <sys/socket.h>
#include <utility>

#include "Playground/Serving/HttpMessages.h"
#include "Playground/Serving/Sockets.h"
#include "Velko/Commands/Sockets.h"

namespace velko::web {

namespace {

using std::chrono::steady_clock;

constexpr unsigned mostConnections = 2 * Waiting::most;
constexpr std::size_t mostMemory = 32U << 10U;  ///< bytes for one connection, with the head of its request
constexpr unsigned longestSilence = 5;          ///< seconds without any data to or from the client
constexpr std::size_t block = 16U << 10U;       ///< bytes of a stream that are sent at once
constexpr auto tick = std::chrono::milliseconds(250);  ///< between two looks at the clock
using ResponseOwner = std::unique_ptr<MHD_Response, decltype(&MHD_destroy_response)>;

}  // namespace

/// The loop that drives the library. The library calls back into it.
class Http::Parts final {
 public:
    Parts(ListeningPort port, HttpHandler& handler) : handler_(handler) {
        daemon_ = MHD_start_daemon(
            MHD_ALLOW_SUSPEND_RESUME, 0, nullptr, nullptr, &Parts::onRequest, this, MHD_OPTION_LISTEN_SOCKET,
            std::move(port).release(), MHD_OPTION_NOTIFY_CONNECTION, &Parts::onConnection, this,
            MHD_OPTION_UNESCAPE_CALLBACK, &Parts::leaveAsItIs, nullptr, MHD_OPTION_CONNECTION_LIMIT,
            mostConnections, MHD_OPTION_CONNECTION_MEMORY_LIMIT, mostMemory, MHD_OPTION_CONNECTION_TIMEOUT,
            longestSilence, MHD_OPTION_STRICT_FOR_CLIENT, 1, MHD_OPTION_SIGPIPE_HANDLED_BY_APP, 1,
            MHD_OPTION_END);
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() {
        if (daemon_ != nullptr) {
            resumeStreams([](const Visit&) { return true; });
            MHD_stop_daemon(daemon_);
        }
    }

    [[nodiscard]] bool works() const noexcept { return daemon_ != nullptr && wakeup_.works(); }

    void run() {
        while (!isStopping_) {
            waitAndServe();
            for (const int socket : waiting_.overdue(steady_clock::now())) {
                ::shutdown(socket, SHUT_RDWR);
            }
        }
    }
    void stop() {
        isStopping_ = true;
        wake();
    }
    void wake() { wakeup_.ring(); }

 private:
    /// A connection: what we have read of its request, and what we send piece by piece.
    struct Visit {
        MHD_Connection* connection;
        int socket = -1;
        bool hasHead = false;
        std::string body{};
        HttpAnswer::NextPiece stream{};
        std::string piece{};
        std::size_t sent = 0;  ///< bytes of `piece`
        bool isSuspended = false;
        bool isGone = false;  ///< whether the client has left

        /// Writes the next bytes to send into `space`. Returns how many; with 0 the connection has to wait.
        std::size_t fill(char* space, std::size_t size) {
            if (sent == piece.size()) {
                piece = stream().value_or("");
                sent = 0;
            }
            const std::size_t count = piece.copy(space, size, sent);
            sent += count;
            return count;
        }
    };

    /// Waits until there is something to do, then does it.
    void waitAndServe() {
        std::array<fd_set, 3> sets{};  // sockets to read from, to write to, and those with an error
        auto& [reading, writing, troubled] = sets;
        int highest = wakeup_.reader();
        FD_SET(highest, &reading);
        // The library does not watch connections that are suspended, so we do.
        for (const auto& [connection, visit] : visits_) {
            if (visit.isSuspended) {
                FD_SET(visit.socket, &reading);
                highest = std::max(highest, visit.socket);
            }
        }
        MHD_get_fdset(daemon_, &reading, &writing, &troubled, &highest);
        MHD_UNSIGNED_LONG_LONG due = 0;
        const bool isDue = MHD_get_timeout(daemon_, &due) == MHD_YES && std::cmp_less(due, tick.count());
        const std::chrono::microseconds wait = isDue ? std::chrono::milliseconds(due) : tick;
        timeval longest{.tv_sec = 0, .tv_usec = static_cast<suseconds_t>(wait.count())};
        if (::select(highest + 1, &reading, &writing, &troubled, &longest) < 0) {
            sets = {};
        }
        const bool isWoken = FD_ISSET(wakeup_.reader(), &reading);
        if (isWoken) {
            wakeup_.clear();
        }
        const auto now = steady_clock::now();
        const bool mayGoOn = isWoken || now - lastTick_ >= tick;
        lastTick_ = mayGoOn ? now : lastTick_;
        // We resume them before the library's turn: it does not end a wait when one is resumed.
        resumeStreams([&](Visit& visit) {
            visit.isGone = FD_ISSET(visit.socket, &reading);
            return mayGoOn || visit.isGone;
        });
        MHD_run_from_select(daemon_, &reading, &writing, &troubled);
    }

    template <class Predicate>
    void resumeStreams(Predicate isMeant) {
        for (auto& [connection, visit] : visits_) {
            if (visit.isSuspended && isMeant(visit)) {
                visit.isSuspended = false;
                MHD_resume_connection(connection);
            }
        }
    }

    MHD_Result send(MHD_Connection* connection, Visit& visit, HttpAnswer answer) {
        if (answer.stream) {
            visit.stream = std::move(answer.stream);
            waiting_.leave(visit.socket);
        }
        const ResponseOwner response(
            visit.stream ? MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, block, &Parts::onStream,
                                                             &visit, nullptr)
                         : MHD_create_response_from_buffer(answer.content.size(), answer.content.data(),
                                                           MHD_RESPMEM_MUST_COPY),
            &MHD_destroy_response);
        if (!response) {
            return MHD_NO;
        }
        addHeaders(*response, answer);
        return MHD_queue_response(connection, static_cast<unsigned>(answer.status), response.get());
    }

    /// Called first with the head of a request, then with each piece of its body, at last with an empty
    /// piece.
    MHD_Result take(MHD_Connection* connection, const RequestHead& head, std::string_view piece) {
        Visit& visit = visits_.at(connection);
        if (!std::exchange(visit.hasHead, true)) {
            auto refusal = handler_.refuse(head);
            return refusal ? send(connection, visit, *std::move(refusal)) : MHD_YES;
        }
        if (piece.empty()) {
            return send(connection, visit, handler_.answer(head, visit.body));
        }
        if (head.method != "POST" || piece.size() > Gate::longestBody - visit.body.size()) {
            return MHD_NO;
        }
        visit.body += piece;
        return MHD_YES;
    }

    // The library calls these functions. It is written in C, so they must not throw.

    static MHD_Result onRequest(void* self, MHD_Connection* connection, const char* path, const char* method,
                                const char*, const char* data, std::size_t* size, void**) {
        try {
            const std::string_view piece(data, std::exchange(*size, 0));
            return static_cast<Parts*>(self)->take(connection, headOf(connection, method, path), piece);
        } catch (...) {
            return MHD_NO;
        }
    }

    static ssize_t onStream(void* context, std::uint64_t, char* space, std::size_t size) {
        try {
            auto& visit = *static_cast<Visit*>(context);
            if (visit.isGone) {
                return MHD_CONTENT_READER_END_WITH_ERROR;
            }
            const std::size_t count = visit.fill(space, size);
            if (count == 0) {
                visit.isSuspended = true;
                MHD_suspend_connection(visit.connection);
            }
            return static_cast<ssize_t>(count);
        } catch (...) {
            return MHD_CONTENT_READER_END_WITH_ERROR;
        }
    }

    static void onConnection(void* context, MHD_Connection* connection, void**,
                             MHD_ConnectionNotificationCode what) {
        auto& self = *static_cast<Parts*>(context);
        try {
            if (what == MHD_CONNECTION_NOTIFY_STARTED) {
                const auto* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
                const int socket = info == nullptr ? -1 : info->connect_fd;
                self.visits_.emplace(connection, Visit{.connection = connection, .socket = socket});
                self.waiting_.enter(socket, steady_clock::now());
            } else if (const auto visit = self.visits_.find(connection); visit != self.visits_.end()) {
                self.waiting_.leave(visit->second.socket);
                self.visits_.erase(visit);
            }
        } catch (...) {
            // Without a visit the request is refused, and the connection closed.
            return;
        }
    }

    static std::size_t leaveAsItIs(void*, MHD_Connection*, char* text) {
        return std::string_view(text).size();
    }

    HttpHandler& handler_;
    Wakeup wakeup_;
    Waiting waiting_;
    std::map<MHD_Connection*, Visit> visits_;
    steady_clock::time_point lastTick_{};
    std::atomic<bool> isStopping_ = false;
    MHD_Daemon* daemon_ = nullptr;
};

Http::Http(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

Http::~Http() = default;

std::unique_ptr<Http> Http::on(ListeningPort port, HttpHandler& handler) {
    auto parts = std::make_unique<Parts>(std::move(port), handler);
    return parts->works() ? std::unique_ptr<Http>(new Http(std::move(parts))) : nullptr;
}

void Http::run() {
    parts_->run();
}

void Http::stop() {
    parts_->stop();
}

void Http::wake() {
    parts_->wake();
}

}  // namespace velko::web
