#include "Playground/Serving/Server.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <spawn.h>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>

#include "Playground/Serving/CommandBridge.h"
#include "Playground/Serving/Files.h"
#include "Playground/Serving/Gate.h"
#include "Playground/Serving/Http.h"
#include "Playground/Serving/Sockets.h"
#include "Playground/Terminal/Folders.h"
#include "Playground/Terminal/Terminal.h"
#include "Playground/Web/Live.h"
#include "Velko/Commands/CommandClient.h"

// Some systems declare it, others do not.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace velko::web {

namespace {

using std::chrono::steady_clock;

constexpr auto breath = std::chrono::milliseconds(500);  ///< between two signs that the program is alive

HttpAnswer line(int status, std::string_view text) {
    return {.status = status, .type = "text/plain; charset=utf-8", .content = std::string(text) + "\n"};
}

HttpAnswer page(int status, std::string content) {
    return {.status = status, .type = std::string(pageType), .content = std::move(content)};
}

/// The text of an event in the stream, where each line begins with "data:".
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

/// The stream for one page: it sends what has changed. From time to time it sends an empty comment, which
/// shows whether the page is still there.
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

bool isSet(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

/// Asks the desktop to show the page, if there is a desktop.
void openPage(const std::string& address) {
    std::string program = VELKO_PAGE_OPENER;
    if (program == "xdg-open" && !isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY")) {
        return;
    }
    std::string argument = address;
    std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
    posix_spawn_file_actions_t quietly;
    posix_spawn_file_actions_init(&quietly);
    for (const int descriptor : {1, 2}) {
        posix_spawn_file_actions_addopen(&quietly, descriptor, "/dev/null", 1, 0);
    }
    // The browser must start with the usual handling of signals, not with ours.
    posix_spawnattr_t usual;
    posix_spawnattr_init(&usual);
    posix_spawnattr_setflags(&usual, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&usual, &signals);
    for (const int signal : {SIGPIPE, SIGCHLD, SIGXFSZ}) {
        sigaddset(&signals, signal);
    }
    posix_spawnattr_setsigdefault(&usual, &signals);
    pid_t child = 0;
    posix_spawnp(&child, program.c_str(), &quietly, &usual, arguments.data(), environ);
    posix_spawnattr_destroy(&usual);
    posix_spawn_file_actions_destroy(&quietly);
}

/// A page that closes while we answer must not end the program. A finished `xdg-open` must not stay as a
/// zombie process.
void ignoreWhatEndsNothing() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGCHLD, SIG_IGN);
}

/// Opens the socket for commands, and says how to use it. Without it the page works all the same.
void openForCommands(CommandBridge& bridge, const ServeOptions& options) {
    const auto file = commandSocketIn(std::filesystem::absolute(options.home));
    if (const auto opened = bridge.open(file); !opened) {
        std::cerr << "No commands can be given: " << opened.error() << '\n';
        return;
    }
    std::cout << "Commands work it too:\n  export VELKO_SOCKET='" << file.string() << "'\n  "
              << options.caller.string() << " status --json\n"
              << std::flush;
}

}  // namespace

std::filesystem::path commandSocketIn(const std::filesystem::path& home) {
    // In a folder of its own, because that has to be closed to everybody else.
    return home / "commands" / commands::socketName;
}

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
        // The page made no mistake, so this is no error: it shows the line to its user.
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

int serve(const ServeOptions& options) {
    auto port = ListeningPort::take(options.port);
    if (!port) {
        std::cerr << port.error() << '\n';
        return 1;
    }
    FolderLock home(options.home);
    if (!playground::prepareFolder(options.home) || !playground::claim(home)) {
        return 1;
    }
    ignoreWhatEndsNothing();
    const std::string address = "http://127.0.0.1:" + std::to_string(port->number());
    const std::string token = makeToken();
    // Other users of this machine can read the arguments of the browser, so the address in them works only
    // once.
    const std::string ticket = makeToken();
    Feed feed;
    Live live(options.home, feed);
    Server server(
        {.gate = Gate(port->number(), token), .ticket = Ticket(ticket), .feed = feed, .live = live});
    const auto http = Http::on(*std::move(port), server);
    if (!http) {
        std::cerr << "The page can't be served.\n";
        return 1;
    }
    feed.onPublish = [&http] { http->wake(); };
    CommandBridge bridge(live);
    // From here on there is something that has to end in an orderly way.
    // Blocked in every thread, so that this one can wait for them.
    const sigset_t ending = playground::endingSignals();
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    live.begin();
    playground::tellHolder(home, address + withToken(pagePath, token));
    std::thread serving([&http] { http->run(); });
    std::cout << address << withToken(pagePath, token)
              << "\nThe playground is open there, to whoever has this whole address. Ctrl-C ends it.\n"
              << std::flush;
    openForCommands(bridge, options);
    if (options.mayOpen) {
        openPage(address + withToken(ticketPath, ticket));
    }
    int signal = 0;
    sigwait(&ending, &signal);
    // Work that is under way may take some time. A second signal ends the program at once.
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
    live.end();
    http->stop();
    serving.join();
    return 0;
}

}  // namespace velko::web
