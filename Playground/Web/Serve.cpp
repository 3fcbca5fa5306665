#include "Playground/Web/Serve.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <spawn.h>
#include <string>
#include <thread>
#include <unistd.h>

#include "Playground/Terminal/HomeFolder.h"
#include "Playground/Web/Feed.h"
#include "Playground/Web/Files.h"
#include "Playground/Web/Http.h"
#include "Playground/Web/Live.h"
#include "Playground/Web/Port.h"
#include "Playground/Web/Server.h"

// Some systems declare it and some do not.
extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace velko::web {

namespace {

/// The signals that end the program. Blocked in every thread, so that one of them can wait for them.
sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    return signals;
}

bool isSet(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

/// Asks the desktop, where there is one, to show the page.
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
    // The browser starts with the signals that a program usually has, not with ours.
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

/// A page that goes away amid an answer is no reason to end; nor is a finished `xdg-open` to be kept.
void ignoreWhatEndsNothing() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGCHLD, SIG_IGN);
}

}  // namespace

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
    // Others on this machine may read what the browser is started with, so that opens the page only once.
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
    // Only now is there something to end in an orderly way.
    const sigset_t ending = endingSignals();
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    live.begin();
    playground::tellHolder(home, address + withToken(pagePath, token));
    std::thread serving([&http] { http->run(); });
    std::cout << address << withToken(pagePath, token)
              << "\nThe playground is open there, to whoever has this whole address. Ctrl-C ends it.\n"
              << std::flush;
    if (options.mayOpen) {
        openPage(address + withToken(ticketPath, ticket));
    }
    int signal = 0;
    sigwait(&ending, &signal);
    // What is under way may take its time. A second signal does not wait for it.
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
    live.end();
    http->stop();
    serving.join();
    return 0;
}

}  // namespace velko::web
