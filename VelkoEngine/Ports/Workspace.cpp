#include "VelkoEngine/Ports/Workspace.h"

#include <algorithm>

#include "VelkoCore/Search/NameOrder.h"

namespace velko {

std::vector<std::size_t> Workspace::placesOf(const std::vector<std::string>& names) const {
    std::vector<NameOrder> folded;
    std::vector<std::size_t> sorted;
    folded.reserve(names.size());
    sorted.reserve(names.size());
    for (const std::string& name : names) {
        sorted.push_back(folded.size());
        folded.emplace_back(name);
    }
    std::ranges::sort(sorted,
                      [&](std::size_t left, std::size_t right) { return folded[left] < folded[right]; });
    std::vector<std::size_t> places(names.size());
    for (std::size_t at = 1; at < sorted.size(); ++at) {
        const std::size_t before = places[sorted[at - 1]];
        places[sorted[at]] = names[sorted[at]] == names[sorted[at - 1]] ? before : before + 1;
    }
    return places;
}

}  // namespace velko
