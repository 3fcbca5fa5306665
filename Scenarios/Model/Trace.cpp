#include "Scenarios/Model/Trace.h"

#include <algorithm>
#include <ranges>
#include <string_view>
#include <utility>

#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Time/SimulatedMainThread.h"

namespace velko::scenarios::model {

namespace {

/// From "date  [category] text".
Happening parsed(std::string_view line, MainThread::Uptime at) {
    constexpr std::string_view before = "  [";
    constexpr std::string_view after = "] ";
    const auto begin = line.find(before) + before.size();
    const auto end = line.find(after, begin);
    return {.at = at,
            .category = std::string(line.substr(begin, end - begin)),
            .text = std::string(line.substr(end + after.size()))};
}

}  // namespace

Trace::Trace(World& world)
    : world_(world), nextOnTurn_(std::exchange(world.mac().mainThread.onTurn, nullptr)) {
    world_.mac().mainThread.onTurn = [this] {
        look();
        if (nextOnTurn_) {
            nextOnTurn_();
        }
    };
}

Trace::~Trace() {
    world_.mac().mainThread.onTurn = std::move(nextOnTurn_);
}

std::vector<Happening> Trace::take() {
    look();
    return std::exchange(happened_, {});
}

void Trace::look() {
    const auto now = world_.mac().mainThread.now();
    const auto& lines = world_.log().lines();
    const auto newestFirst = lines | std::views::reverse;
    const auto fresh =
        std::ranges::find_if(newestFirst, [this](const std::string& line) { return &line == last_; }) -
        newestFirst.begin();
    for (const std::string& line : lines | std::views::drop(std::ssize(lines) - fresh)) {
        happened_.push_back(parsed(line, now));
        last_ = &line;
    }
    const bool isNoteOpen = world_.mac().surfaces.surface(Surfaces::Kind::note).isOpen();
    if (std::exchange(wasNoteOpen_, isNoteOpen) != isNoteOpen) {
        happened_.push_back(
            {.kind = isNoteOpen ? Happening::Kind::noteOpened : Happening::Kind::noteClosed, .at = now});
    }
}

}  // namespace velko::scenarios::model
