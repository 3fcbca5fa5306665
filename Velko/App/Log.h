#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "Velko/App/LineRing.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The diagnostic log: what Velko decided and why, in words. Keeps the newest lines in memory, which it takes
/// at the start, and appends every line to a file that only its user may read. Main thread only.
class Log final : private NonCopyable {
 public:
    static constexpr std::size_t maxLines = 2000;

    /// Room for so many lines that are three times as long as usual. Fewer are kept only if they are longer.
    static constexpr std::size_t maxBytes = std::size_t{512} * 1024;

    /// The file is opened at the first line; when it can't be, lines go to memory only. `clock` outlives
    /// the log.
    Log(const MainThread& clock, std::filesystem::path file, FileCalls calls = {});
    ~Log();

    /// "Library/Logs/Velko.log" in a home folder.
    [[nodiscard]] static std::filesystem::path defaultFile(const std::filesystem::path& home);

    /// Adds "date  [category] message".
    void log(std::string_view category, std::string_view message);

    /// The newest lines as string views, oldest first: a range with random access. Nothing of it may be used
    /// after the next line.
    [[nodiscard]] auto lines() const { return ring_.lines(); }

    /// The newest lines in the same way, so many of them or as many as there are.
    [[nodiscard]] auto newest(std::uint64_t count) const { return ring_.newest(count); }

    /// How many lines have been logged so far, also those that are not kept any more.
    [[nodiscard]] std::uint64_t count() const noexcept { return ring_.pushed(); }

    /// The lines as one text, joined by line feeds, with none at the end.
    [[nodiscard]] std::string text() const;

    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }

    /// Calls `heard` with each new line, without a line feed. It must not log. The log outlives the
    /// subscription.
    [[nodiscard]] Subscription follow(std::function<void(const std::string&)> heard);

 private:
    void append(std::string_view line);

    const MainThread& clock_;
    std::filesystem::path file_;
    FileCalls calls_;
    LineRing ring_{{.lines = maxLines, .bytes = maxBytes}};
    bool opened_ = false;
    int descriptor_ = -1;
    std::map<int, std::function<void(const std::string&)>> followers_;
    int nextFollower_ = 0;
};

/// Texts in their order, as the log lists them: "a, b, c".
template <class Texts>
[[nodiscard]] std::string joined(const Texts& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all.append(all.empty() ? "" : ", ").append(text);
    }
    return all;
}

}  // namespace velko
