#include "Playground/Terminal/Folders.h"

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "VelkoCore/Files/AtomicFile.h"

namespace velko::playground {

namespace {

using std::filesystem::path;

/// A folder that the environment names. A relative path is ignored: it would mean another folder in each
/// working directory.
path fromEnvironment(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): before any thread starts
    const path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : path();
}

/// Makes the folder if it is missing. Returns why it cannot be used; empty if it can.
std::string problemWith(const path& folder) {
    if (const auto target = AtomicFile::followOwnLinks(folder); !target) {
        return target.error().description;
    }
    if (const auto made = AtomicFile::makeFolder(folder); !made) {
        return made.error().description;
    }
    struct stat found{};
    if (::stat(folder.c_str(), &found) != 0 || ::access(folder.c_str(), R_OK | W_OK | X_OK) != 0) {
        return std::generic_category().message(errno);
    }
    if (!S_ISDIR(found.st_mode)) {
        return "it is no folder";
    }
    return found.st_uid == ::geteuid() ? "" : "it belongs to another user";
}

}  // namespace

std::optional<path> homeFolder() {
    if (const path data = fromEnvironment("XDG_DATA_HOME"); !data.empty()) {
        return data / "velko-playground";
    }
    const path home = fromEnvironment("HOME");
    return home.empty() ? std::nullopt : std::optional(home / ".local" / "share" / "velko-playground");
}

bool prepareFolder(const path& folder) {
    const std::string problem = problemWith(folder);
    if (!problem.empty()) {
        std::cerr << "The folder " << folder.string() << " can't be used: " << problem << '\n';
    }
    return problem.empty();
}

bool claim(FolderLock& lock) {
    if (const auto taken = lock.take(); !taken) {
        const auto& [isTaken, description] = taken.error();
        std::cerr << (isTaken ? "Another program works with " + lock.folder().string() + ": " +
                                    (description.empty() ? "it doesn't say who it is" : description)
                              : "Other programs can't be kept out. " + description)
                  << ".\n";
        return !isTaken;
    }
    tellHolder(lock, "");
    return true;
}

void tellHolder(FolderLock& lock, const std::string& address) {
    lock.tell("process " + std::to_string(::getpid()) + (address.empty() ? "" : ", " + address));
}

std::expected<std::string, std::string> readFile(const path& file) {
    auto content = AtomicFile::read(file);
    if (!content) {
        return std::unexpected(content.error().description);
    }
    std::optional<std::string>& text = *content;
    return text ? std::expected<std::string, std::string>(*std::move(text))
                : std::unexpected("There is no file " + file.string() + ".");
}

std::optional<ScratchFolder> ScratchFolder::create() {
    std::error_code error;
    const auto parent = std::filesystem::temp_directory_path(error);
    std::string pattern = (parent / "velko-playground-XXXXXX").string();
    if (error || ::mkdtemp(pattern.data()) == nullptr) {
        return std::nullopt;
    }
    return ScratchFolder(pattern);
}

ScratchFolder::ScratchFolder(ScratchFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}

ScratchFolder::~ScratchFolder() {
    if (!path_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
}

}  // namespace velko::playground
