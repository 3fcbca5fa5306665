#include "Velko/Flows/EarlierLayouts.h"

#include <algorithm>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Apps/ChangeWords.h"
#include "Velko/Apps/EarlierWords.h"
#include "Velko/Apps/MenuBarApps.h"

namespace velko {

EarlierLayouts::EarlierLayouts(FlowHost& host, const Platform& platform, const LayoutHistory& history,
                               Log& log, std::function<void()> replaced)
    : host_(host),
      mainThread_(platform.mainThread),
      workspace_(platform.workspace),
      history_(history),
      log_(log),
      replaced_(std::move(replaced)) {}

std::string EarlierLayouts::title(const HistoryEntry& entry) const {
    const auto now = Calendar().localTime(floorToSeconds(mainThread_.date()));
    return EarlierWords::when(entry.when, now) + ", " + EarlierWords::before(entry.cause);
}

std::expected<std::vector<EarlierLayout>, FileError> EarlierLayouts::list() const {
    return history_.list();
}

std::string EarlierLayouts::inWords(const EarlierLayout& earlier) const {
    if (!earlier.layout) {
        return "It can't be read: " + earlier.layout.error().description;
    }
    const AppValues& values = host_.values();
    if (values.problems.layoutUnreadable) {
        return std::to_string(earlier.layout->sections.size()) + " apps have their place in it.";
    }
    return EarlierWords::differences(changesOfRestoring(values.layout, values.managed.over(*earlier.layout)),
                                     values, AppNames(values, workspace_));
}

std::expected<void, std::string> EarlierLayouts::restore(std::uint32_t number) {
    auto kept = history_.list();
    if (!kept) {
        return std::unexpected(kept.error().description);
    }
    const auto found =
        std::ranges::find(*kept, number, [](const EarlierLayout& earlier) { return earlier.entry.number; });
    if (found == kept->end()) {
        return std::unexpected("There is no earlier layout with the number " + std::to_string(number) + ".");
    }
    if (!found->layout) {
        return std::unexpected("That layout can't be read: " + found->layout.error().description);
    }
    const auto now = Calendar().localTime(floorToSeconds(mainThread_.date()));
    host_.edit(ChangeWords::restored(EarlierWords::when(found->entry.when, now)),
               [&](Layout& layout) { layout = restored(layout, *found->layout); });
    log_.log("layout", "restored " + std::to_string(found->layout->sections.size()) + " placements from " +
                           (history_.folder() / found->entry.file()).string());
    replaced_();
    return {};
}

}  // namespace velko
