#include "Scenarios/Language/Script.h"

#include <optional>
#include <utility>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/Rules/Invariants.h"

namespace velko::script {

std::expected<std::vector<Line>, Mistake> read(std::string_view text) {
    std::vector<Line> lines;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const auto end = text.find('\n');
        auto step = parse(text.substr(0, end));
        if (!step) {
            return std::unexpected(Mistake{.line = number, .what = std::move(step).error()});
        }
        if (std::optional<Step>& found = *step) {
            lines.push_back({.number = number, .step = *std::move(found)});
        }
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return lines;
}

std::expected<void, Mistake> play(const std::vector<Line>& scenario, scenarios::World& world,
                                  const std::function<bool(const Step&)>& before) {
    scenarios::Invariants invariants(world);
    for (const Line& line : scenario) {
        if (before && !before(line.step)) {
            break;
        }
        if (auto done = perform(line.step, world); !done) {
            return std::unexpected(Mistake{.line = line.number, .what = std::move(done).error()});
        }
        if (const auto breach = invariants.check(line.step)) {
            return std::unexpected(
                Mistake{.line = line.number, .what = "It no longer holds that " + *breach});
        }
    }
    return {};
}

}  // namespace velko::script
