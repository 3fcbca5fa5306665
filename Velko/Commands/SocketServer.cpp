#include "Velko/Commands/SocketServer.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <map>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "Velko/Commands/Messages.h"
#include "Velko/Commands/SocketFile.h"
#include "Velko/Commands/Sockets.h"

namespace velko::commands {

namespace {

using std::chrono::steady_clock;

constexpr auto tick = std::chrono::milliseconds(250);     ///< between two looks at the clock
constexpr auto breather = std::chrono::milliseconds(50);  ///< when the system has no room for one more client
constexpr std::size_t readAtOnce = 16U << 10U;            ///< bytes

}  // namespace

class SocketServer::Parts final : private NonCopyable {
 public:
    explicit Parts(ListeningFile file) : file_(std::move(file)) {}
    ~Parts() { stop(); }

    [[nodiscard]] bool works() const noexcept { return wakeup_.works(); }
    void start(Handlers handlers) {
        handlers_ = std::move(handlers);
        thread_ = std::thread([this] { run(); });
    }
    void stop() {
        isStopping_ = true;
        wakeup_.ring();
        if (thread_.joinable()) {
            thread_.join();
        }
    }

    void send(Client client, std::string_view lines) {
        const std::scoped_lock lock(mutex_);
        if (const auto found = visits_.find(client); found != visits_.end()) {
            Visit& visit = found->second;
            if (visit.unread.empty()) {
                sending_.enter(visit.socket.number(), steady_clock::now());
            }
            visit.unread += lines;
            visit.isGone = visit.isGone || visit.unread.size() > mostUnread;
            wakeup_.ring();
        }
    }

    void hangUp(Client client) {
        const std::scoped_lock lock(mutex_);
        if (const auto found = visits_.find(client); found != visits_.end()) {
            found->second.mustLeave = true;
            wakeup_.ring();
        }
    }

 private:
    /// What one client has sent, and what it still has to get.
    struct Visit {
        Socket socket;
        Lines lines{};
        bool hasAsked = false;
        std::string unread{};
        bool mustLeave = false;  ///< once it has read everything
        bool isGone = false;     ///< it has left, or is dropped
    };

    enum class Progress { some, none, gone };

    /// Writes what the client takes now.
    static Progress write(Visit& visit) {
        const auto count = ::send(visit.socket.number(), visit.unread.data(), visit.unread.size(), 0);
        if (count > 0) {
            visit.unread.erase(0, static_cast<std::size_t>(count));
            return Progress::some;
        }
        return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR) ? Progress::none
                                                                                        : Progress::gone;
    }

    /// What has happened in one turn, to be told without the lock: the handlers may send.
    struct News {
        std::vector<std::pair<Client, std::string>> asked;
        std::vector<Client> left;
    };

    void run() {
        while (!isStopping_) {
            std::vector<Client> order;
            auto polled = watched(order);
            if (::poll(polled.data(), static_cast<nfds_t>(polled.size()), static_cast<int>(tick.count())) <
                0) {
                for (pollfd& each : polled) {
                    each.revents = 0;
                }
            }
            wakeup_.clear();
            News news;
            {
                const std::scoped_lock lock(mutex_);
                for (std::size_t index = 0; index < order.size(); ++index) {
                    serve(order[index], polled[index + 2].revents, news);
                }
                dropLate();
                closeGone(news);
                if ((polled[1].revents & POLLIN) != 0) {
                    welcome();
                }
            }
            for (const auto& [client, line] : news.asked) {
                handlers_.asked(client, line);
            }
            for (const Client client : news.left) {
                handlers_.left(client);
            }
        }
    }

    /// The wakeup, the socket that listens, and then the clients in `order`.
    std::vector<pollfd> watched(std::vector<Client>& order) {
        const std::scoped_lock lock(mutex_);
        std::vector<pollfd> polled{{.fd = wakeup_.reader(), .events = POLLIN, .revents = 0},
                                   {.fd = file_.socket().number(), .events = POLLIN, .revents = 0}};
        for (const auto& [client, visit] : visits_) {
            const int events = POLLIN | (visit.unread.empty() ? 0 : POLLOUT);
            polled.push_back(
                {.fd = visit.socket.number(), .events = static_cast<short>(events), .revents = 0});
            order.push_back(client);
        }
        return polled;
    }

    void serve(Client client, int happened, News& news) {
        Visit& visit = visits_.at(client);
        if ((happened & (POLLIN | POLLHUP | POLLERR)) != 0) {
            read(client, visit, news);
        }
        if (!visit.isGone && !visit.unread.empty()) {
            const Progress progress = write(visit);
            visit.isGone = progress == Progress::gone;
            if (progress == Progress::some) {
                sending_.leave(visit.socket.number());
                if (!visit.unread.empty()) {
                    sending_.enter(visit.socket.number(), steady_clock::now());
                }
            }
        }
        visit.isGone = visit.isGone || (visit.mustLeave && visit.unread.empty());
    }

    /// A client that closes its end, or says more than one line, leaves.
    void read(Client client, Visit& visit, News& news) {
        std::array<char, readAtOnce> bytes{};
        const auto count = ::recv(visit.socket.number(), bytes.data(), bytes.size(), 0);
        if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) {
            return;
        }
        const bool fits = count > 0 && visit.lines.add({bytes.data(), static_cast<std::size_t>(count)});
        if (count <= 0 || visit.hasAsked) {
            visit.isGone = true;
            return;
        }
        if (!fits) {
            refuse(visit, "The request is longer than a line may be.", status::notUnderstood);
        } else if (auto line = visit.lines.next()) {
            visit.isGone = !visit.lines.isEmpty();
            visit.hasAsked = !visit.isGone;
            asking_.leave(visit.socket.number());
            if (visit.hasAsked) {
                news.asked.emplace_back(client, *std::move(line));
            }
        }
    }

    static void refuse(Visit& visit, std::string_view why, int code) {
        visit.unread += answerLines({.kind = Answer::Kind::error, .text = std::string(why) + "\n"}) +
                        answerLines({.kind = Answer::Kind::exit, .status = code});
        visit.mustLeave = true;
        // What does not fit into the socket at once is not worth waiting for.
        static_cast<void>(write(visit));
        visit.isGone = true;
    }

    void dropLate() {
        const auto now = steady_clock::now();
        for (const auto& late : {asking_.overdue(now), sending_.overdue(now)}) {
            for (auto& [client, visit] : visits_) {
                visit.isGone = visit.isGone || std::ranges::count(late, visit.socket.number()) > 0;
            }
        }
    }

    void closeGone(News& news) {
        for (auto each = visits_.begin(); each != visits_.end();) {
            const auto& [client, visit] = *each;
            if (!visit.isGone) {
                ++each;
                continue;
            }
            if (visit.hasAsked && !visit.mustLeave) {
                news.left.push_back(client);
            }
            asking_.leave(visit.socket.number());
            sending_.leave(visit.socket.number());
            each = visits_.erase(each);
        }
    }

    void welcome() {
        for (auto socket = file_.accept(); socket; socket = file_.accept()) {
            if (peerUser(*socket) != ::geteuid()) {
                continue;
            }
            Visit visit{.socket = *std::move(socket)};
            if (visits_.size() == mostClients) {
                refuse(visit, "Too many commands at once.", status::failed);
                continue;
            }
            asking_.enter(visit.socket.number(), steady_clock::now());
            visits_.emplace(nextClient_++, std::move(visit));
        }
        if (errno == EMFILE || errno == ENFILE) {
            std::this_thread::sleep_for(breather);  // the socket stays readable
        }
    }

    ListeningFile file_;
    Handlers handlers_;
    Wakeup wakeup_;
    std::atomic<bool> isStopping_ = false;
    std::mutex mutex_;  ///< guards what follows
    std::map<Client, Visit> visits_;
    Client nextClient_ = 1;
    Waiting asking_;   ///< those whose line has not ended
    Waiting sending_;  ///< those that have something to read, since they last read something
    std::thread thread_;
};

SocketServer::SocketServer(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

SocketServer::~SocketServer() = default;

std::expected<std::unique_ptr<SocketServer>, std::string> SocketServer::open(
    const std::filesystem::path& file) {
    auto listening = ListeningFile::make(file);
    if (!listening) {
        return std::unexpected(listening.error());
    }
    auto parts = std::make_unique<Parts>(*std::move(listening));
    if (!parts->works()) {
        return std::unexpected("The system has no resources left for a socket.");
    }
    return std::unique_ptr<SocketServer>(new SocketServer(std::move(parts)));
}

void SocketServer::start(Handlers handlers) {
    parts_->start(std::move(handlers));
}

void SocketServer::stop() {
    parts_->stop();
}

void SocketServer::send(Client client, std::string_view lines) {
    parts_->send(client, lines);
}

void SocketServer::hangUp(Client client) {
    parts_->hangUp(client);
}

}  // namespace velko::commands
