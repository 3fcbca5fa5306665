#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the two ends of the socket say to each other: one JSON object on each line. The caller sends one
/// request. Velko answers with pieces of what the caller shall print, and then with the exit status.
namespace velko::commands {

inline constexpr std::int64_t protocol = 1;             ///< the version of these messages
inline constexpr std::size_t longestLine = 64U << 10U;  ///< bytes, with the line feed
inline constexpr std::size_t longestText = 8U << 10U;   ///< bytes of one piece of an answer

/// Cuts what comes from a socket into lines.
class Lines final {
 public:
    /// Takes the next bytes. Returns false if a line is too long: nothing after it can be read.
    [[nodiscard]] bool add(std::string_view bytes);
    /// The next whole line, without its line feed.
    [[nodiscard]] std::optional<std::string> next();
    /// Whether `next` has given everything that has come.
    [[nodiscard]] bool isEmpty() const noexcept { return rest_.empty(); }

 private:
    std::string rest_;
    std::size_t unfinished_ = 0;  ///< bytes of the last line
    bool isTooLong_ = false;
};

/// A request, as a line: the words after "velko".
[[nodiscard]] std::string requestLine(const std::vector<std::string>& words);
/// Reads such a line without its line feed. If it is wrong, a sentence says why.
[[nodiscard]] std::expected<std::vector<std::string>, std::string> readRequest(std::string_view line);

/// One message of an answer.
struct Answer {
    enum class Kind {
        out,    ///< `text` belongs on the standard output
        error,  ///< `text` belongs on the standard error
        exit,   ///< the last message: the caller ends with `status`
    };

    Kind kind = Kind::exit;
    std::string text{};
    int status = 0;

    bool operator==(const Answer&) const = default;
};

/// The message as lines: a long text is cut into several.
[[nodiscard]] std::string answerLines(const Answer& answer);
[[nodiscard]] std::expected<Answer, std::string> readAnswer(std::string_view line);

namespace status {

inline constexpr int done = 0;
inline constexpr int failed = 1;
inline constexpr int notUnderstood = 2;

}  // namespace status

}  // namespace velko::commands
