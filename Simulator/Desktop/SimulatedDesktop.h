#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Ports/Desktop.h"

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

    Policy now = Policy::accessory;
    bool hasDockIcon = false;
    int activations = 0;
    bool isTerminating = false;
    std::vector<OpenedFile> openedFiles;
    std::function<void()> onTerminate;  ///< called amid Velko's call
};

class SimulatedDefaults final : public Defaults {
 public:
    [[nodiscard]] bool isOn(const std::string& key) const override {
        const auto found = switches.find(key);
        return found != switches.end() && found->second;
    }
    void setOn(const std::string& key, bool on) override { switches[key] = on; }

    std::map<std::string, bool> switches;
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

}  // namespace velko
