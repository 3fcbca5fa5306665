#include "Velko/App/SingleInstance.h"

#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Dialogs.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

constexpr auto pause = std::chrono::milliseconds(100);  ///< between two attempts

}  // namespace

SingleInstance::SingleInstance(const Platform& platform, const AppPorts& ports, Log& log,
                               const LayoutStore& store, BundleID ownBundleID)
    : platform_(platform),
      ports_(ports),
      log_(log),
      lock_(store.folderLock()),
      ownBundleID_(std::move(ownBundleID)) {}

void SingleInstance::claim(std::function<void()> start) {
    start_ = std::move(start);
    deadline_ = platform_.mainThread.now() + patience;
    attempt();
}

std::vector<std::filesystem::path> SingleInstance::takeFiles() {
    return std::exchange(files_, {});
}

void SingleInstance::release() {
    wait_.cancel();
    lock_.release();
}

void SingleInstance::attempt() {
    const auto taken = lock_.take();
    if (taken) {
        start_();
    } else if (!taken.error().isTaken) {
        log_.log("layout", "another Velko would not be noticed, the folder can't be locked: " +
                               taken.error().description);
        start_();
    } else if (platform_.mainThread.now() < deadline_) {
        wait_ = platform_.mainThread.after(pause, [this] { attempt(); });
    } else {
        giveWay(taken.error().description);
    }
}

void SingleInstance::giveWay(const std::string& holder) {
    if (const auto other = otherInstance()) {
        handOver(*other);
    } else {
        ask(holder);
    }
}

/// Opens the other Velko as a double click would, to which it answers with its settings.
void SingleInstance::handOver(const std::filesystem::path& other) {
    log_.log("app", "another Velko has the layout: " + other.string() + ". This one makes way for it.");
    if (files_.empty()) {
        ports_.application.openFile(other, std::nullopt);
    }
    for (const auto& file : takeFiles()) {
        ports_.application.openFile(file, other);
    }
    wait_ = platform_.mainThread.after(farewell, [this] { ports_.application.terminate(); });
}

/// Nobody here has the layout: only its owner knows who may.
void SingleInstance::ask(const std::string& holder) {
    log_.log("app", "the layout is in use elsewhere" + (holder.empty() ? "" : ": " + holder));
    wait_ = ports_.dialogs.ask(
        {.title = "Your layout is in use elsewhere.",
         .message = "Another program works on it" + (holder.empty() ? "" : " (" + holder + ")") +
                    ", perhaps a Velko on another Mac that shares your home folder. Two at once would undo "
                    "each other's changes.",
         .confirm = "Try Again",
         .cancel = "Quit"},
        [this](bool again) {
            if (again) {
                claim(std::move(start_));
            } else {
                ports_.application.terminate();
            }
        });
}

std::optional<std::filesystem::path> SingleInstance::otherInstance() const {
    const ProcessID own = platform_.processes.ownPID();
    for (const RunningApplication& each : platform_.workspace.runningApplications()) {
        if (each.bundleID == ownBundleID_ && each.pid != own && each.bundlePath) {
            return *each.bundlePath;
        }
    }
    return std::nullopt;
}

}  // namespace velko
