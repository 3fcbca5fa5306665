#include "Velko/Flows/ManagedWatch.h"

#include <utility>
#include <vector>

#include "Velko/App/Log.h"
#include "Velko/Apps/ManagedWords.h"
#include "Velko/Flows/Beat.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

ManagedWatch::ManagedWatch(FlowHost& host, MainThread& mainThread, Log& log, ManagedLayoutFile file,
                           std::function<void()> changed)
    : host_(host), mainThread_(mainThread), log_(log), file_(std::move(file)), changed_(std::move(changed)) {}

void ManagedWatch::start(Beat& beat) {
    // It may come as late as it likes: something else wakes the machine often enough.
    beat.add({.period = Timing::managedLookInterval,
              .late = Timing::managedLookInterval,
              .hasWork = [this] { return !file_.file.empty(); },
              .run = [this] { look(); }});
}

void ManagedWatch::read() {
    reading_.cancel();
    take(file_.read());
}

void ManagedWatch::look() {
    if (file_.file.empty() || reading_.isPending()) {
        return;
    }
    reading_ = mainThread_.background([file = file_] { return file.read(); },
                                      [this](Outcome outcome) {
                                          if (take(std::move(outcome))) {
                                              changed_();
                                          }
                                      });
}

/// Whether the file says something else than before.
bool ManagedWatch::take(Outcome outcome) {
    if (outcome == last_) {
        return false;
    }
    last_ = std::move(outcome);
    ManagedLayout::Found found = last_ ? last_->value_or(ManagedLayout::Found()) : ManagedLayout::Found();
    host_.set(&AppValues::managed, std::move(found.layout));
    host_.set(&AppValues::managedFaults,
              last_ ? std::move(found.faults) : std::vector<std::string>{last_.error()});
    tell();
    return true;
}

void ManagedWatch::tell() const {
    const AppValues& values = host_.values();
    if (!last_) {
        log_.log("managed", "IGNORED: " + last_.error());
        return;
    }
    log_.log("managed",
             *last_ ? inWords(values.managed) + " from " + file_.file.string() : "nothing any more");
    for (const std::string& fault : values.managedFaults) {
        log_.log("managed", "left out: " + fault);
    }
}

}  // namespace velko
