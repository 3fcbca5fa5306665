#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Files/FolderLock.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Sees to it that one Velko at a time works on a layout: two would undo each other's saves. A second one,
/// such as a copy in another folder, brings the first one's settings to the front, and ends. Main thread;
/// owned by the delegate.
class SingleInstance final : private NonCopyable {
 public:
    static constexpr auto patience = std::chrono::seconds(1);         ///< with one that may be ending
    static constexpr auto farewell = std::chrono::milliseconds(500);  ///< for the system to pass on a request

    /// All references outlive this.
    SingleInstance(const Platform& platform, const AppPorts& ports, Log& log, const LayoutStore& store,
                   BundleID ownBundleID);

    /// Calls `start` once, as soon as no other Velko works on the layout: at once, as a rule.
    void claim(std::function<void()> start);
    /// A file that the user has opened, for the Velko that goes on; before `start` is called.
    void keep(const std::filesystem::path& file) { files_.push_back(file); }
    /// The files that were kept, once this is the Velko that goes on.
    [[nodiscard]] std::vector<std::filesystem::path> takeFiles();
    /// Lets another Velko start. What is pending is given up.
    void release();

 private:
    void attempt();
    void giveWay(const std::string& holder);
    void handOver(const std::filesystem::path& other);
    void ask(const std::string& holder);
    [[nodiscard]] std::optional<std::filesystem::path> otherInstance() const;

    Platform platform_;
    AppPorts ports_;
    Log& log_;
    FolderLock lock_;
    BundleID ownBundleID_;
    std::function<void()> start_;
    std::vector<std::filesystem::path> files_;
    MainThread::Uptime deadline_{0};
    Task wait_;
};

}  // namespace velko
