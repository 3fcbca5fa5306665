#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "Playground/Web/Picture.h"
#include "Playground/Web/Session.h"
#include "VelkoCore/Files/Json.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// Hands pictures from the one who draws them to every page that watches. Any thread.
class Feed final : private NonCopyable {
 public:
    static constexpr std::size_t mostReaders = 8;

    /// A page that watches, from where it has read on. One thread at a time; not after the feed.
    class Reader final : private NonCopyable {
     public:
        ~Reader();

        /// What has changed since the last time, as a JSON text; nothing when nothing has.
        [[nodiscard]] std::optional<std::string> next();

     private:
        friend class Feed;
        explicit Reader(Feed& feed) : feed_(feed) {}

        Feed& feed_;
        std::uint64_t seen_ = 0;
    };

    Feed() = default;

    /// One more reader; null when there are as many as there may be.
    [[nodiscard]] std::shared_ptr<Reader> subscribe();
    [[nodiscard]] std::size_t readers() const;

    void publish(const Picture& picture);

    /// Called after each publishing, on its thread. Set before there are several threads.
    std::function<void()> onPublish;

 private:
    struct Part {
        Json value;
        std::uint64_t changedAt = 0;
    };

    void put(const std::string& name, Json value);

    mutable std::mutex mutex_;
    std::map<std::string, Part> parts_;
    std::uint64_t version_ = 0;
    std::size_t readers_ = 0;
};

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
