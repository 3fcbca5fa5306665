#include "Velko/App/Log.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "VelkoCore/Files/AtomicFile.h"

namespace velko {

namespace {

/// "2026-03-01 09:30:00.250" in the user's time zone.
std::string timestamp(PreciseDate date) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(date);
    const std::time_t time = std::chrono::system_clock::to_time_t(seconds);
    std::tm local{};
    std::string text(64, '\0');
    if (::localtime_r(&time, &local) == nullptr) {
        return "?";
    }
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
    const auto milliseconds = static_cast<int>((date - seconds).count());
    const int added = std::snprintf(text.data() + length, text.size() - length, ".%03d", milliseconds);
    text.resize(length + static_cast<std::size_t>(added));
    return text;
}

/// Opens a file of the user's own, and makes it where it is missing; -1 where it is none or can't be opened.
int openForAppending(const std::filesystem::path& file, const FileCalls& calls) {
    const auto target = AtomicFile::followOwnLinks(file, calls);
    if (!target) {
        return -1;
    }
    // Where no link was, none may have come since. O_NONBLOCK: a pipe in the file's place must not hold up
    // the program.
    const int flags = O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC;
    const int descriptor = uninterrupted([&] {
        return calls.open(file.c_str(), *target == file ? flags | O_NOFOLLOW : flags, S_IRUSR | S_IWUSR);
    });
    struct stat found{};
    const bool isOwn = descriptor >= 0 && ::fstat(descriptor, &found) == 0 && found.st_uid == ::geteuid();
    if (descriptor >= 0 && (!isOwn || ::fchmod(descriptor, S_IRUSR | S_IWUSR) != 0)) {
        calls.close(descriptor);
        return -1;
    }
    return descriptor;
}

}  // namespace

Log::Log(const MainThread& clock, std::filesystem::path file, FileCalls calls)
    : clock_(clock), file_(std::move(file)), calls_(std::move(calls)) {}

Log::~Log() {
    if (descriptor_ >= 0) {
        calls_.close(descriptor_);
    }
}

std::filesystem::path Log::defaultFile(const std::filesystem::path& home) {
    return home / "Library" / "Logs" / "Velko.log";
}

void Log::log(std::string_view category, std::string_view message) {
    constexpr std::string_view beforeCategory = "  [";
    constexpr std::string_view afterCategory = "] ";
    const std::string time = timestamp(clock_.date());
    std::string line;
    line.append(time).append(beforeCategory).append(category).append(afterCategory).append(message);
    append(line + "\n");
    for (const auto& [id, heard] : followers_) {
        heard(line);
    }
    ring_.push(line);
}

Subscription Log::follow(std::function<void(const std::string&)> heard) {
    const int id = nextFollower_++;
    followers_.emplace(id, std::move(heard));
    return Subscription([this, id] { followers_.erase(id); });
}

std::string Log::text() const {
    std::string text;
    for (const std::string_view line : lines()) {
        text.append(text.empty() ? "" : "\n").append(line);
    }
    return text;
}

void Log::append(std::string_view line) {
    if (!std::exchange(opened_, true)) {
        descriptor_ = openForAppending(file_, calls_);
    }
    while (descriptor_ >= 0 && !line.empty()) {
        const auto written = calls_.write(descriptor_, line.data(), line.size());
        if (written > 0) {
            line.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return;
        }
    }
}

}  // namespace velko
