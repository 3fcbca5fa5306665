#include "VelkoEngine/Background/Awaited.h"

#include <chrono>
#include <memory>
#include <utility>

#include "VelkoEngine/Ports/MainThread.h"

namespace velko::Awaited {

namespace {

using Work = MainThread::Work;

constexpr Uptime longest = std::chrono::minutes(1);

/// A task and its activity, which lasts as long as the task. The task's work owns this object too, so the
/// activity also lasts when the owner detaches the task.
class Waiting final : public Task::Handle {
 public:
    explicit Waiting(Subscription activity) : activity_(std::move(activity)) {}

    void hold(Task task) noexcept { task_ = std::move(task); }
    void end() { activity_.end(); }

    void cancel() noexcept override {
        // Destroying the task's work may destroy this object, so it happens last.
        const Task cancelled = std::exchange(task_, {});
        activity_.end();
    }
    [[nodiscard]] bool isPending() const noexcept override { return task_.isPending(); }

 private:
    Task task_;
    Subscription activity_;
};

}  // namespace

Task after(const Platform& platform, const std::string& what, Uptime delay, Work work) {
    if (delay > longest) {
        return platform.mainThread.after(delay, std::move(work));
    }
    auto waiting = std::make_shared<Waiting>(platform.activity.begin(what));
    waiting->hold(platform.mainThread.after(delay, [waiting, work = std::move(work)] {
        work();
        waiting->end();
    }));
    return Task(std::move(waiting));
}

Task every(const Platform& platform, const std::string& what, Uptime period, Work work) {
    auto waiting = std::make_shared<Waiting>(platform.activity.begin(what));
    // The queue holds the work for as long as it repeats.
    waiting->hold(platform.mainThread.every(period, [waiting, work = std::move(work)] { work(); }));
    return Task(std::move(waiting));
}

}  // namespace velko::Awaited
