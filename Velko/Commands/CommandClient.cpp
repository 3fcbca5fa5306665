#include "Velko/Commands/CommandClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <utility>

#include "Velko/Commands/Grammar.h"
#include "Velko/Commands/GrammarTexts.h"
#include "Velko/Commands/Messages.h"
#include "Velko/Commands/SocketFile.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::commands {

namespace {

using std::chrono::steady_clock;

constexpr auto answerTime = std::chrono::seconds(10);  ///< for Velko to say the next thing
constexpr std::size_t takenAtOnce = 16U << 10U;        ///< bytes

/// How long Velko may say nothing; nothing: as long as it likes.
std::optional<std::chrono::seconds> silenceAllowed(const Call& call) {
    if (call.verb == Verb::log && call.has("-f")) {
        return std::nullopt;
    }
    std::int64_t seconds = call.verb == Verb::waitUntil ? 60 : 0;
    if (const auto given = call.options.find("--timeout"); given != call.options.end()) {
        std::from_chars(given->second.data(), given->second.data() + given->second.size(), seconds);
    }
    return answerTime + std::chrono::seconds(seconds);
}

/// Prints what Velko answers.
class Conversation {
 public:
    Conversation(Socket socket, const Call& call, const CallerSurroundings& surroundings)
        : socket_(std::move(socket)), silence_(silenceAllowed(call)), surroundings_(surroundings) {}

    int hold(std::string request) {
        while (!request.empty()) {
            if (!waitFor(POLLOUT)) {
                return fail("Velko doesn't take the command.");
            }
            const auto count = ::send(socket_.number(), request.data(), request.size(), 0);
            if (count < 0 && errno != EAGAIN && errno != EINTR) {
                break;  // it may have said why before it hung up
            }
            request.erase(0, count < 0 ? 0 : static_cast<std::size_t>(count));
        }
        while (waitFor(POLLIN)) {
            std::array<char, takenAtOnce> bytes{};
            const auto count = ::recv(socket_.number(), bytes.data(), bytes.size(), 0);
            if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
                continue;
            }
            if (count <= 0) {
                return fail("Velko hung up before it had answered. Perhaps it has ended.");
            }
            if (!lines_.add({bytes.data(), static_cast<std::size_t>(count)})) {
                return fail("Velko's answer can't be read.");
            }
            if (const auto end = print()) {
                return *end;
            }
        }
        return fail("Velko doesn't answer.");
    }

 private:
    [[nodiscard]] int fail(std::string_view why) const {
        surroundings_.error("velko: " + std::string(why) + "\n");
        return status::failed;
    }

    /// Prints the lines that have come. The status to end with, if one of them says it.
    std::optional<int> print() {
        while (const auto line = lines_.next()) {
            const auto answer = readAnswer(*line);
            if (!answer) {
                return fail(answer.error());
            }
            const std::string text = printable(answer->text, "\n\t");
            if (answer->kind == Answer::Kind::exit) {
                return answer->status;
            }
            // Whoever reads what is printed may have stopped.
            const bool isPrinted = answer->kind == Answer::Kind::out ? surroundings_.out(text)
                                                                     : surroundings_.error("velko: " + text);
            if (!isPrinted) {
                return status::failed;
            }
        }
        return std::nullopt;
    }

    /// Whether the socket is ready before Velko has been silent for too long.
    [[nodiscard]] bool waitFor(short event) const {
        const auto deadline = steady_clock::now() + silence_.value_or(answerTime);
        while (!silence_ || steady_clock::now() < deadline) {
            pollfd socket{.fd = socket_.number(), .events = event, .revents = 0};
            if (::poll(&socket, 1, 1000) > 0) {
                return true;
            }
        }
        return false;
    }

    Socket socket_;
    std::optional<std::chrono::seconds> silence_;
    const CallerSurroundings& surroundings_;
    Lines lines_;
};

/// What `velko` answers by itself.
int answerAlone(const Call& call, const CallerSurroundings& surroundings) {
    const std::string word = call.argument(0);
    const Row* const row = rowNamed(word);
    const std::string text = call.verb == Verb::version       ? "velko " + surroundings.version + "\n"
                             : call.verb == Verb::completions ? completionsFor(word)
                             : call.has("--man")              ? manPage(surroundings.version)
                             : row == nullptr                 ? helpText()
                                                              : helpText(*row);
    return surroundings.out(text) ? status::done : status::failed;
}

/// The call as Velko gets it: with whole paths.
std::vector<std::string> wordsToSend(const Call& call, const std::filesystem::path& folder) {
    const Row& row = rowOf(call.verb);
    std::vector<std::string> words;
    for (std::size_t start = 0; start < row.words.size();) {
        const std::size_t end = std::min(row.words.find(' ', start), row.words.size());
        words.emplace_back(row.words.substr(start, end - start));
        start = end + 1;
    }
    for (const auto& [option, value] : call.options) {
        words.push_back(option);
        if (!value.empty()) {
            words.back().append("=").append(value);
        }
    }
    words.emplace_back("--");
    for (std::size_t index = 0; index < call.arguments.size(); ++index) {
        const std::string& argument = call.arguments[index];
        const bool isFile = row.arguments.at(index).kind == Kind::file;
        words.push_back(isFile ? (folder / argument).lexically_normal().string() : argument);
    }
    return words;
}

}  // namespace

std::optional<std::filesystem::path> socketInEnvironment() {
    const char* const value = std::getenv("VELKO_SOCKET");  // NOLINT(concurrency-mt-unsafe): one thread
    return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::filesystem::path>(value);
}

Print printTo(std::FILE* file) {
    return [file](std::string_view text) {
        return std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
    };
}

int runCommandLine(const std::vector<std::string>& words, const CallerSurroundings& surroundings) {
    std::signal(SIGPIPE, SIG_IGN);
    const auto call = parse(words);
    if (!call) {
        surroundings.error("velko: " + call.error() + " Try: velko help\n");
        return status::notUnderstood;
    }
    if (rowOf(call->verb).place == Place::caller) {
        return answerAlone(*call, surroundings);
    }
    Connection connection = connectTo(surroundings.socket);
    if (!connection.socket.isOpen()) {
        surroundings.error(
            "velko: " + (connection.problem.empty() ? "Velko does not run." : connection.problem) + "\n");
        return status::failed;
    }
    const std::string request = requestLine(wordsToSend(*call, surroundings.folder));
    if (request.size() > longestLine) {
        surroundings.error("velko: That is too long.\n");
        return status::notUnderstood;
    }
    return Conversation(std::move(connection.socket), *call, surroundings).hold(request);
}

}  // namespace velko::commands
