#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <thread>

#include "Playground/Web/Feed.h"
#include "Playground/Web/Session.h"
#include "VelkoCore/Files/Json.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// A session whose time passes by itself while somebody watches, and whose pictures go to a feed as soon as
/// they change. Any thread.
class Live final : private NonCopyable {
 public:
    /// Time stands still at first.
    Live(const std::filesystem::path& home, Feed& feed);
    ~Live();

    /// Lets time pass, on a thread of its own. Once.
    void begin();
    /// Ends Velko in an orderly way, and time with it. Waits for what is being done.
    void end();

    /// Does what the page asks for, and publishes what came of it before it returns.
    Done act(std::string_view action, const Json& body);

 private:
    void run();
    /// Whether time passes as fast as it can.
    [[nodiscard]] bool flies() const;
    void publishIfChanged();

    Feed& feed_;
    std::mutex mutex_;  ///< guards the session
    Session session_;
    std::uint64_t published_ = 0;
    std::condition_variable ended_;
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace velko::web
