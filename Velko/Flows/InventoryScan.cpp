#include "Velko/Flows/InventoryScan.h"

#include <utility>

#include "VelkoCore/Timing.h"
#include "VelkoEngine/Inventory.h"

namespace velko {

InventoryScan::InventoryScan(const Platform& platform, std::function<std::vector<MenuBarItem>()> known,
                             Accept accept)
    : platform_(platform), known_(std::move(known)), accept_(std::move(accept)) {}

void InventoryScan::request(Depth depth) {
    if (running_.isPending() && runningDepth_ == Depth::full) {
        depth = Depth::full;
    }
    runningDepth_ = depth;
    lastRequest_ = platform_.mainThread.now();
    const auto answer = [this, depth](std::vector<MenuBarItem> items) { accept_(std::move(items), depth); };
    // Replacing the task drops the answer of the scan before, even one that would arrive first.
    running_ = depth == Depth::full ? Inventory::items(platform_, answer)
                                    : Inventory::items(platform_, known_(), answer);
}

void InventoryScan::followLaunch() {
    std::erase_if(rescans_, [](const Task& task) { return !task.isPending(); });
    request(Depth::light);
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
    rescans_.clear();
}

}  // namespace velko
