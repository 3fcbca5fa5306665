#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Files/AtomicFile.h"

namespace velko {

/// Velko as the simulated desktop sees it.
class SimulatedApplication final : public Application {
 public:
    struct OpenedFile {
        std::filesystem::path file;
        std::optional<std::filesystem::path> application;

        bool operator==(const OpenedFile&) const = default;
    };

    [[nodiscard]] Policy policy() const override { return now; }
    void setPolicy(Policy policy) override { now = policy; }
    void showDockIcon() override { hasDockIcon = true; }
    void activate() override { ++activations; }
    void terminate() override {
        isTerminating = true;
        if (onTerminate) {
            onTerminate();
        }
    }
    void openFile(const std::filesystem::path& file,
                  const std::optional<std::filesystem::path>& application) override {
        openedFiles.push_back({.file = file, .application = application});
    }
    [[nodiscard]] Outcome moveToTrash(const std::filesystem::path& file) override {
        return note("trash " + file.string());
    }
    [[nodiscard]] Outcome copy(const std::filesystem::path& from, const std::filesystem::path& to) override {
        return note("copy " + from.string() + " to " + to.string());
    }
    void openAnother(const std::filesystem::path& program,
                     std::function<void(const Outcome&)> done) override {
        done(note("open " + program.string()));
    }

    Policy now = Policy::accessory;
    bool hasDockIcon = false;
    int activations = 0;
    bool isTerminating = false;
    std::vector<OpenedFile> openedFiles;
    std::function<void()> onTerminate;   ///< called inside Velko's call
    std::vector<std::string> fileDeeds;  ///< what was done to files, in order
    std::string refusedDeed{};           ///< the system refuses what begins like this; empty: nothing

 private:
    [[nodiscard]] Outcome note(const std::string& deed) {
        if (!refusedDeed.empty() && deed.starts_with(refusedDeed)) {
            return std::unexpected("not allowed");
        }
        fileDeeds.push_back(deed);
        return {};
    }
};

class SimulatedDefaults final : public Defaults {
 public:
    [[nodiscard]] bool isOn(const std::string& key) const override {
        const auto found = switches.find(key);
        return found != switches.end() && found->second;
    }
    void setOn(const std::string& key, bool on) override { switches[key] = on; }
    [[nodiscard]] std::string text(const std::string& key) const override {
        const auto found = texts.find(key);
        return found == texts.end() ? std::string() : found->second;
    }
    void setText(const std::string& key, const std::string& text) override { texts[key] = text; }

    std::map<std::string, bool> switches;
    std::map<std::string, std::string> texts;
};

class SimulatedPasteboard final : public Pasteboard {
 public:
    void setText(const std::string& text) override { content = text; }

    std::string content;
};

class SimulatedUpdater final : public Updater {
 public:
    [[nodiscard]] std::optional<std::string> whyUnavailable() const override { return reason; }
    [[nodiscard]] bool checkForUpdates() override { return ++checks > 0 && starts; }

    std::optional<std::string> reason = "This copy of Velko came without the updater.";
    bool starts = true;  ///< false: it is there, but broken
    int checks = 0;
};

/// The system's list of programs to open at login.
class SimulatedLoginItem final : public LoginItem {
 public:
    [[nodiscard]] Status status() const override { return now; }
    [[nodiscard]] std::expected<void, std::string> setEnabled(bool enabled) override {
        if (refusal) {
            return std::unexpected(*refusal);
        }
        now = enabled ? Status::enabled : Status::notRegistered;
        return {};
    }

    Status now = Status::notRegistered;
    std::optional<std::string> refusal;  ///< every change is refused with these words
};

/// The disk of a machine. Its files are in a folder of the host, and it counts the bytes that are written.
class SimulatedDisk final {
 public:
    /// The file system's calls. They may outlive this.
    [[nodiscard]] FileCalls calls() const {
        FileCalls calls;
        calls.write = [write = calls.write, counter = bytesWritten_](int file, const void* data,
                                                                     std::size_t size) {
            const auto written = write(file, data, size);
            *counter += static_cast<std::uint64_t>(std::max<std::ptrdiff_t>(written, 0));
            return written;
        };
        calls.fsync = [](int) { return 0; };  // a Mac in memory never loses its power
        // Locks always succeed: a program of the host that has the folder does not run on this Mac.
        calls.flock = [](int, int) { return 0; };
        calls.ftruncate = [](int, long long) { return 0; };
        return calls;
    }
    [[nodiscard]] std::uint64_t bytesWritten() const noexcept { return *bytesWritten_; }

 private:
    std::shared_ptr<std::uint64_t> bytesWritten_ = std::make_shared<std::uint64_t>(0);
};

}  // namespace velko
