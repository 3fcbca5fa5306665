#include "Playground/Web/Serve.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/select.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "Playground/Web/Feed.h"
#include "Playground/Web/Live.h"
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

/// The library watches connections with select(), which knows no descriptor beyond a limit and would wait
/// for one beyond it without end.
void keepDescriptorsSmall() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur > FD_SETSIZE) {
        limit.rlim_cur = FD_SETSIZE;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
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
    sigaddset(&signals, SIGPIPE);
    sigaddset(&signals, SIGCHLD);
    posix_spawnattr_setsigdefault(&usual, &signals);
    pid_t child = 0;
    posix_spawnp(&child, program.c_str(), &quietly, &usual, arguments.data(), environ);
    posix_spawnattr_destroy(&usual);
    posix_spawn_file_actions_destroy(&quietly);
}

/// Why nothing can be kept in a folder, which is made where it is missing; empty when it can.
std::string problemWith(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!error && ::access(folder.c_str(), R_OK | W_OK | X_OK) != 0) {
        error = {errno, std::generic_category()};
    }
    return error ? error.message() : "";
}

}  // namespace

int serve(const ServeOptions& options) {
    if (const std::string problem = problemWith(options.home); !problem.empty()) {
        std::cerr << "The folder " << options.home.string() << " can't be used: " << problem << '\n';
        return 1;
    }
    keepDescriptorsSmall();
    const sigset_t ending = endingSignals();
    pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    // A page that goes away amid an answer is no reason to end; nor is a finished `xdg-open` to be kept.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGCHLD, SIG_IGN);
    Feed feed;
    Server server(feed);
    const auto port = server.bind(options.port);
    if (!port) {
        std::cerr << port.error() << '\n';
        return 1;
    }
    Live live(options.home, feed);
    const std::string address = "http://127.0.0.1:" + std::to_string(*port) + "/";
    std::cout << address << "\nThe playground is open there. Ctrl-C ends it.\n" << std::flush;
    if (options.mayOpen) {
        openPage(address);
    }
    std::thread serving([&] { server.run(live); });
    int signal = 0;
    sigwait(&ending, &signal);
    live.end();
    // A client may keep the server waiting. A second signal does not wait for it.
    pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
    server.stop();
    serving.join();
    return 0;
}

}  // namespace velko::web
