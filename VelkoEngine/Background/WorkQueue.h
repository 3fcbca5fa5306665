#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Work that waits for its time, in order of due time and then of scheduling. A main thread on a real clock
/// is made of it. The queue has no clock: its owner says what time it is, and calls again when the next work
/// is due. One thread only. Tasks may outlive the queue; their work never runs then.
class WorkQueue final : private NonCopyable {
 public:
    using Uptime = MainThread::Uptime;
    using Work = MainThread::Work;

    WorkQueue();
    ~WorkQueue();

    /// Runs `work` once, at `due` or after.
    [[nodiscard]] Task once(Uptime due, Work work);

    /// Runs `work` at `first` and then every `period`. When turns were missed, the work runs once for all of
    /// them.
    [[nodiscard]] Task repeatedly(Uptime first, Uptime period, Work work);

    /// When to come back: at `at`, or up to `leeway` later. Repeated work may wait for a tenth of its
    /// period, so that the machine can wake for several things at once; other work may not.
    struct Wake {
        Uptime at{};
        Uptime leeway{};

        bool operator==(const Wake&) const = default;
    };
    [[nodiscard]] std::optional<Wake> nextWake() const;

    /// Runs the first piece of work that is due at `now`; false when there is none.
    bool runNext(Uptime now);

    /// Drops all work without running it.
    void clear();

 private:
    class Entry;
    using Key = std::pair<Uptime, std::uint64_t>;
    using Entries = std::map<Key, std::shared_ptr<Entry>>;

    [[nodiscard]] Task schedule(Uptime due, Uptime period, Work work);
    void insert(const std::shared_ptr<Entry>& entry);

    std::shared_ptr<Entries> entries_;  ///< tasks hold it weakly, to leave it when they are cancelled
    std::uint64_t scheduled_ = 0;
};

/// Work that other threads post to the thread of a `WorkQueue`. It waits here until that thread takes it.
class PostedWork final : private NonCopyable {
 public:
    using Uptime = MainThread::Uptime;

    /// Adds work that was due at `due`, which is when it was posted. Returns whether nothing waited before,
    /// so that somebody has to wake the queue's thread. Any thread.
    bool add(Uptime due, MainThread::Work work);

    /// Puts everything into the queue, in the order in which it was posted. The queue's thread.
    void moveTo(WorkQueue& queue);

    /// Sleeps until something is posted, or until that moment of the host's steady clock.
    void waitUntil(Uptime moment);

 private:
    struct Posted {
        Uptime due;
        MainThread::Work work;
    };

    std::mutex mutex_;
    std::condition_variable isPosted_;
    std::vector<Posted> posted_;
};

}  // namespace velko
