#include "Scenarios/Acts/DisplayActs.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "Simulator/Desktop/SimulatedDisplays.h"

namespace velko::script {

namespace {

Display displayNamed(std::string_view name, Point origin) {
    if (name == "desk") {
        return SimulatedDisplays::plain(origin);
    }
    Display laptop = SimulatedDisplays::notched(origin);
    laptop.safeAreaTop = name == "laptop-room" ? 0 : laptop.safeAreaTop;
    if (name == "laptop-inset") {
        laptop.auxiliaryTopLeft = {};
        laptop.auxiliaryTopRight = {};
    }
    return laptop;
}

}  // namespace

Done arrangeDisplays(const Step& step, scenarios::World& world) {
    std::vector<Display> displays;
    std::string_view rest = step.word == "none" ? "" : std::string_view(step.word);
    while (!rest.empty()) {
        const auto end = std::min(rest.find('+'), rest.size());
        const Point origin{.x = displays.empty() ? 0 : displays.front().frame.maxX(), .y = 0};
        displays.push_back(displayNamed(rest.substr(0, end), origin));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    world.mac().setDisplays(std::move(displays));
    return {};
}

}  // namespace velko::script
