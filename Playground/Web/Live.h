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
#include "Simulator/Desktop/SimulatedCommandDoor.h"
#include "VelkoCore/Files/Json.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::web {

/// Passes each new picture on to every page that watches. Any thread.
class Feed final : private NonCopyable {
 public:
    static constexpr std::size_t mostReaders = 8;

    /// What one page has read so far. One thread at a time. The feed must live longer.
    class Reader final : private NonCopyable {
     public:
        ~Reader();

        /// What has changed since the last call, as JSON text; nothing if nothing has changed.
        [[nodiscard]] std::optional<std::string> next();

     private:
        friend class Feed;
        explicit Reader(Feed& feed) : feed_(feed) {}

        Feed& feed_;
        std::uint64_t seen_ = 0;
    };

    Feed() = default;

    /// A new reader; null if there are `mostReaders` already.
    [[nodiscard]] std::shared_ptr<Reader> subscribe();
    [[nodiscard]] std::size_t readers() const;

    void publish(const Picture& picture);

    /// Called after each `publish`, on the same thread. Must be set before there are several threads.
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

/// A session in which time passes by itself while somebody watches. Its picture goes to a feed as soon as it
/// changes. Any thread.
class Live final : private NonCopyable {
 public:
    /// Time stands still until `begin`.
    Live(const std::filesystem::path& home, Feed& feed);
    ~Live();

    /// Starts a thread that lets time pass. May be called once.
    void begin();
    /// Ends Velko in an orderly way, then the thread. Waits for work that is under way.
    void end();

    /// Does what the page asks for. Publishes the new picture before it returns.
    Done act(std::string_view action, const Json& body);

    // Commands. They keep time passing for a while.

    /// Tells how callers are answered. It may happen on any thread.
    void setCallers(SimulatedCommandDoor::Outside callers);
    /// Somebody gives Velko a command. Returns false if Velko does not run.
    [[nodiscard]] bool ask(CommandDoor::Caller caller, const std::string& line);
    /// Somebody goes before the answer is complete.
    void leave(CommandDoor::Caller caller);

 private:
    void run();
    /// Whether time passes as fast as it can.
    [[nodiscard]] bool flies() const;
    /// Whether somebody watches, or has given a command a moment ago.
    [[nodiscard]] bool isNeeded(std::chrono::steady_clock::time_point now);
    void publishIfChanged();

    Feed& feed_;
    std::mutex mutex_;  ///< guards the session
    Session session_;
    std::uint64_t published_ = 0;
    std::optional<std::chrono::steady_clock::time_point> askedAt_;
    std::condition_variable ended_;
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace velko::web
