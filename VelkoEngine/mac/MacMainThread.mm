#import "VelkoEngine/mac/MacMainThread.h"

#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>
#include <pthread.h>

#include <algorithm>
#include <ctime>
#include <optional>
#include <utility>

#include "VelkoEngine/Background/Reads.h"
#include "VelkoEngine/Background/WorkQueue.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// Stands still while the machine sleeps, as do the timers below, which count on the same clock.
MainThread::Uptime uptime() {
    return std::chrono::nanoseconds(clock_gettime_nsec_np(CLOCK_UPTIME_RAW));
}

}  // namespace

/// Lives longer than the main thread's object, until the last background answer has come back.
class MacMainThread::Core final : public std::enable_shared_from_this<Core> {
 public:
    Core() : timer_(dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, 0, dispatch_get_main_queue())) {}

    void start() {
        const std::weak_ptr<Core> weak = weak_from_this();
        dispatch_source_set_event_handler(timer_, ^{
          if (const auto core = weak.lock()) {
              core->armed_.reset();
              core->drain();
          }
        });
        dispatch_activate(timer_);
    }

    void close() {
        closed_ = true;
        dispatch_source_cancel(timer_);
        queue_.clear();
    }

    /// Any thread.
    void post(Work work) {
        if (posted_.add(uptime(), std::move(work))) {
            const auto core = shared_from_this();
            dispatch_async(dispatch_get_main_queue(), ^{
              core->drain();
            });
        }
    }

    [[nodiscard]] Task schedule(Uptime delay, std::optional<Uptime> period, Work work) {
        const Uptime due = uptime() + std::max(delay, Uptime::zero());
        Task task =
            period ? queue_.repeatedly(due, *period, std::move(work)) : queue_.once(due, std::move(work));
        arm();
        return task;
    }

 private:
    /// Runs what is due when it begins. Newer work waits, so that events are handled in between.
    void drain() {
        posted_.moveTo(queue_);
        if (closed_) {
            queue_.clear();
            return;
        }
        const Uptime now = uptime();
        bool more = true;
        while (more && !closed_) {
            @autoreleasepool {
                more = queue_.runNext(now);
            }
        }
        arm();
    }

    void arm() {
        const std::optional<WorkQueue::Wake> wake = closed_ ? std::nullopt : queue_.nextWake();
        if (wake == armed_) {
            return;
        }
        armed_ = wake;
        dispatch_time_t start = DISPATCH_TIME_FOREVER;
        std::uint64_t leeway = 0;
        if (wake) {
            start = dispatch_time(DISPATCH_TIME_NOW, std::max(wake->at - uptime(), Uptime::zero()).count());
            leeway = static_cast<std::uint64_t>(wake->leeway.count());
        }
        dispatch_source_set_timer(timer_, start, DISPATCH_TIME_FOREVER, leeway);
    }

    dispatch_source_t timer_;
    WorkQueue queue_;
    std::optional<WorkQueue::Wake> armed_;
    bool closed_ = false;
    PostedWork posted_;
};

MacMainThread::MacMainThread() : core_(std::make_shared<Core>()) {
    core_->start();
}

MacMainThread::~MacMainThread() {
    core_->close();
}

bool MacMainThread::isCurrent() const noexcept {
    return pthread_main_np() != 0;
}

MainThread::Uptime MacMainThread::now() const {
    return uptime();
}

PreciseDate MacMainThread::date() const {
    return std::chrono::floor<PreciseDate::duration>(std::chrono::system_clock::now());
}

void MacMainThread::post(Work work) {
    core_->post(std::move(work));
}

Task MacMainThread::after(Uptime delay, Work work) {
    return core_->schedule(delay, std::nullopt, std::move(work));
}

Task MacMainThread::every(Uptime period, Work work) {
    return core_->schedule(period, period, std::move(work));
}

Task MacMainThread::startBackground(Read read, Then then) {
    auto underWay = std::make_shared<BackgroundRead>(std::move(read), std::move(then));
    Task task(underWay);
    const auto core = core_;
    // The block can only change what it reaches by a pointer.
    const auto job = std::make_shared<std::shared_ptr<BackgroundRead>>(std::move(underWay));
    dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0), ^{
      @autoreleasepool {
          (*job)->run();
      }
      // Only the posted work owns the read now, so it is destroyed on the main thread.
      core->post([read = std::move(*job)] { read->deliver(); });
    });
    return task;
}

Subscription MacActivity::begin(const std::string& reason) {
    NSProcessInfo* process = [NSProcessInfo processInfo];
    const id<NSObject> token =
        [process beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                   reason:native(reason)];
    return Subscription([process, token] { [process endActivity:token]; });
}

}  // namespace velko
