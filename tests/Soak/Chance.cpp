#include "tests/Soak/Chance.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <ranges>

#include "Scenarios/Language/Verbs.h"
#include "Scenarios/Language/Words.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Velko/App/AppController.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "tests/Soak/Events.h"
#include "tests/Soak/Monkey.h"

namespace velko::soak {

namespace {

constexpr std::size_t allWeights =
    std::accumulate(events.begin(), events.end(), std::size_t{0},
                    [](auto sum, const Event& each) { return sum + each.weight; });

/// The apps from which `absent` chooses. They are few, so that many things happen to the same app.
std::vector<BundleID> everyApp() {
    std::vector<BundleID> apps{scenarios::latecomer().bundleID};
    for (const auto& sample : scenarios::sampleApps() | std::views::take(12)) {
        apps.emplace_back(sample.bundleID);
    }
    return apps;
}

std::vector<BundleID> running(const SimulatedMac& mac) {
    std::vector<BundleID> apps;
    for (const SimulatedProcess& process : mac.processes.running()) {
        const bool isOthers = process.app.isApplication && process.pid != mac.processes.ownPID() &&
                              !AllowlistPlanner::isAlwaysAllowed(process.app.bundleID);
        if (isOthers) {
            apps.push_back(process.app.bundleID);
        }
    }
    return apps;
}

std::vector<BundleID> absent(const SimulatedMac& mac) {
    auto apps = everyApp();
    std::erase_if(apps, [&](const BundleID& app) { return !mac.workspace.pids(app).empty(); });
    return apps;
}

std::vector<BundleID> tucked(const SimulatedMac& mac, const AppController& velko) {
    auto apps = running(mac);
    std::erase_if(apps,
                  [&](const BundleID& app) { return velko.values().layout.section(app) != Section::tucked; });
    return apps;
}

std::vector<BundleID> suggested(AppController& velko) {
    std::vector<BundleID> apps;
    for (const TidySuggestion& suggestion : velko.autopilot().suggestions()) {
        apps.push_back(suggestion.bundleID);
    }
    return apps;
}

/// The apps that an event can be about; nothing when the word is about no apps.
std::optional<std::vector<BundleID>> appsFor(std::string_view word, scenarios::World& world) {
    if (word == "RUNNING") {
        return running(world.mac());
    }
    if (word == "ABSENT") {
        return absent(world.mac());
    }
    AppController* velko = world.velko();
    if (word == "TUCKED") {
        return velko == nullptr ? std::vector<BundleID>() : tucked(world.mac(), *velko);
    }
    if (word == "WAITING") {
        return velko == nullptr ? std::vector<BundleID>() : velko->values().layout.inbox;
    }
    if (word == "SUGGESTED") {
        return velko == nullptr ? std::vector<BundleID>() : suggested(*velko);
    }
    return std::nullopt;
}

script::Step stepOf(const std::string& line) {
    const auto step = script::parse(line);
    assert(step && *step && "a row of the table can't be read");
    return step && *step ? **step : script::Step();
}

}  // namespace

template <class Range>
auto Chance::oneOf(const Range& range) {
    return range[below(range.size())];
}

std::vector<script::Step> Chance::beginning() {
    std::vector<script::Step> steps;
    for (const BundleID& app : everyApp()) {
        const auto sections = script::wordsOf(script::wordOperand("SECTION")->words);
        steps.push_back(stepOf("launch " + app));
        steps.push_back(stepOf("file place " + app + ' ' + std::string(oneOf(sections))));
    }
    steps.push_back(stepOf("velko start"));
    if (below(4) != 0) {
        steps.push_back(stepOf("finish setup"));
    }
    return steps;
}

script::Step Chance::next(scenarios::World& world) {
    waits_ = !waits_ && below(8) != 0;
    if (waits_) {
        return stepOf(wait());
    }
    if (world.velko() == nullptr && below(3) == 0) {
        return stepOf("velko start");
    }
    while (true) {
        if (world.velko() != nullptr && below(3) == 0) {
            if (const auto step = playfulStep(world, [this](std::size_t bound) { return below(bound); })) {
                return *step;
            }
        }
        if (const auto line = filledIn(event(), world)) {
            return stepOf(*line);
        }
    }
}

std::string Chance::wait() {
    const auto upTo = [&](std::size_t most, const char* unit) {
        return "wait " + std::to_string(1 + below(most)) + unit;
    };
    switch (below(8)) {
        case 0:
        case 1: return upTo(45, " ms");  // during an activation
        case 2: return upTo(9, "00 ms");
        case 3:
        case 4: return upTo(6, " s");
        case 5:
        case 6: return upTo(30, " s");
        default: return below(4) == 0 ? upTo(5, " min") : upTo(60, " s");
    }
}

std::string_view Chance::event() {
    std::size_t chosen = below(allWeights);
    for (const Event& each : events) {
        if (chosen < each.weight) {
            return each.line;
        }
        chosen -= each.weight;
    }
    return "wait 1 s";
}

std::string Chance::withDigits(std::string part) {
    constexpr std::string_view digit = "DIGIT";
    for (auto at = part.find(digit); at != std::string::npos; at = part.find(digit)) {
        part.replace(at, digit.size(), std::to_string(1 + below(9)));
    }
    return part;
}

/// Nothing if there is no app for the event.
std::optional<std::string> Chance::filledIn(std::string_view event, scenarios::World& world) {
    std::string line;
    for (const std::string_view part : script::wordsOf(event)) {
        line += line.empty() ? "" : " ";
        if (const auto apps = appsFor(part, world)) {
            if (apps->empty()) {
                return std::nullopt;
            }
            line += oneOf(*apps);
        } else if (const auto* operand = script::wordOperand(part)) {
            line += oneOf(script::wordsOf(operand->words));
        } else {
            line += withDigits(std::string(part));
        }
    }
    return line;
}

}  // namespace velko::soak
