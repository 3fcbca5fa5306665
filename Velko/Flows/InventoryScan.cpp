#include "Velko/Flows/InventoryScan.h"

#include <utility>

#include "VelkoCore/Time/Timing.h"

namespace velko {

InventoryScan::InventoryScan(const Platform& platform, std::function<std::vector<MenuBarItem>()> known,
                             Accept accept, std::function<void()> silence)
    : platform_(platform),
      known_(std::move(known)),
      accept_(std::move(accept)),
      silence_(std::move(silence)) {}

void InventoryScan::request(Depth depth) {
    owesFull_ = owesFull_ || depth == Depth::full;
    lastRequest_ = platform_.mainThread.now();
    // Replacing the task drops the answer of the scan before, even one that would arrive first.
    if (owesFull_) {
        running_ = Inventory::items(platform_, known_(),
                                    [this](Inventory::Found found) { answerFull(std::move(found)); });
    } else {
        running_ = Inventory::itemsAdding(platform_, known_(), [this](Inventory::Found found) {
            accept_(std::move(found.items), Depth::light);
        });
    }
}

void InventoryScan::answerFull(Inventory::Found found) {
    if (!found.isHeard) {
        silence_();
        return;
    }
    owesFull_ = false;
    accept_(std::move(found.items), Depth::full);
}

void InventoryScan::followLaunch() {
    std::erase_if(rescans_, [](const Task& task) { return !task.isPending(); });
    for (const auto delay : Timing::launchRescanDelays) {
        rescans_.push_back(platform_.mainThread.after(delay, [this] { request(Depth::light); }));
    }
}

bool InventoryScan::isQuiet() const {
    // Whoever asks at this very interval is now and then a moment early.
    constexpr auto enough = Timing::lightRescanInterval * 9 / 10;
    return !lastRequest_ || platform_.mainThread.now() - *lastRequest_ >= enough;
}

void InventoryScan::cancel() noexcept {
    running_.cancel();
    owesFull_ = false;
    rescans_.clear();
}

}  // namespace velko
