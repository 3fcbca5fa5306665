#include "tests/Soak/Chance.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <numeric>
#include <ranges>

#include "Scenarios/Language/Verbs.h"
#include "Scenarios/Language/Words.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "tests/Soak/Monkey.h"

namespace velko::soak {

namespace {

/// What may happen, as a script says it; words in capitals are filled in.
struct Event {
    std::size_t weight;
    std::string_view line;
};

constexpr auto events = std::to_array<Event>({
    {40, "click broom"},
    {12, "click broom option"},
    {6, "click broom told WAY"},
    {6, "right click broom told WAY"},
    {3, "hold broom DIGIT00 ms"},
    {3, "voiceover press broom"},
    {12, "click outside"},
    {8, "press escape"},
    {8, "point at PLACE"},
    {12, "click icon RUNNING"},
    {16, "open RUNNING"},
    {12, "menu close"},
    {6, "menu open RUNNING"},
    {4, "activate RUNNING"},
    {12, "launch ABSENT"},
    {6, "launch com.example.newDIGITDIGIT"},
    {4, "launch ABSENT icons 2"},
    {4, "launch regular ABSENT"},
    {1, "launch RUNNING"},
    {10, "quit RUNNING"},
    {4, "crash RUNNING"},
    {4, "hang RUNNING"},
    {12, "unhang RUNNING"},
    {3, "slow RUNNING DIGIT0 ms"},
    {4, "slow RUNNING 0 ms"},
    {3, "stall DIGIT00 ms"},
    {1, "stall DIGIT s"},
    {2, "cpu RUNNING 90"},
    {2, "memory RUNNING 2000"},
    {10, "icon title RUNNING DIGIT"},
    {24, "icon title TUCKED DIGIT"},
    {8, "icon badge TUCKED DIGIT"},
    {4, "icon width RUNNING 4DIGIT"},
    {2, "icon add RUNNING"},
    {2, "icon remove RUNNING"},
    {16, "place RUNNING SECTION"},
    {12, "place WAITING SECTION"},
    {12, "show me RUNNING"},
    {4, "show all"},
    {6, "accept SUGGESTED"},
    {2, "dismiss SUGGESTED"},
    {2, "always keep SUGGESTED"},
    {2, "forget ABSENT"},
    {4, "undo"},
    {2, "redo"},
    {4, "close note"},
    {1, "finish setup"},
    {3, "export soak.velko"},
    {4, "import soak.velko"},
    {6, "set pop-out on"},
    {4, "set pop-out off"},
    {4, "set live-activities SWITCH"},
    {4, "set autopilot SWITCH"},
    {2, "show changes TUCKED SWITCH"},
    {3, "show to audience RUNNING SWITCH"},
    {3, "set leave-out SWITCH"},
    {4, "set ask on"},
    {2, "set ask off"},
    {4, "set new-icons SECTION"},
    {6, "set auto-tuck DIGIT"},
    {3, "set notched-style STYLE"},
    {6, "set other-style shelf"},
    {3, "set other-style STYLE"},
    {4, "set hover on"},
    {2, "set hover off"},
    {2, "set login SWITCH"},
    {2, "set search-in-menu SWITCH"},
    {3, "set presenting on"},
    {1, "set presenting off"},
    {3, "command \"present on\""},
    {6, "command \"present off\""},
    {2, "set key presenting control+option+p"},
    {3, "press keys control+option+p"},
    {3, "set key toggle control+option+k"},
    {2, "set key toggle-buried control+option+l"},
    {2, "set key search control+option+m"},
    {1, "set key ACTION none"},
    {6, "press keys control+option+k"},
    {4, "press keys control+option+l"},
    {6, "press keys control+option+m"},
    {1, "keys taken control+option+k"},
    {2, "keys free control+option+k"},
    {3, "activity start"},
    {12, "activity end"},
    {8, "displays DISPLAYS"},
    {3, "trust revoke"},
    {2, "trust revoke unnoticed"},
    {16, "trust grant"},
    {6, "trust grant unnoticed"},
    {2, "tap disable"},
    {2, "tap die"},
    {2, "tap refuse"},
    {6, "tap allow"},
    {3, "hits end at OWNER"},
    {4, "engine refuse 1"},
    {1, "engine refuse"},
    {1, "engine raise"},
    {1, "engine missing"},
    {4, "engine slow DIGIT00 ms"},
    {2, "engine slow DIGIT s"},
    {24, "engine recover"},
    {2, "broom lies SPOT"},
    {8, "broom lies bar"},
    {2, "images cost DIGIT0 ms"},
    {6, "nap"},
    {1, "velko reopen"},
    {2, "screens sleep"},
    {4, "screens wake"},
    {4, "switch space"},
    {1, "leave session"},
    {4, "return to session"},
    {3, "sleep 8 h"},
    {2, "clock back DIGIT h"},
    {2, "zone ZONE"},
    {2, "clock forward DIGIT days"},
    {3, "file place RUNNING SECTION"},
    {2, "file spoil"},
    {5, "file reload"},
    {2, "saving fail"},
    {6, "saving recover"},
    {3, "velko quit"},
    {2, "velko crash"},
    {6, "command show"},
    {4, "command \"show --buried\""},
    {6, "command tuck"},
    {4, "command toggle"},
    {4, "command \"open RUNNING \""},
    {4, "command \"place RUNNING SECTION \""},
    {2, "command \"wait-until tidy\""},
    {2, "command \"list --json\""},
    {2, "command \"history --json\""},
    {3, "command \"history restore DIGIT\""},
    {2, "open address \"velko:toggle\""},
    {2, "open address \"velko:ask/on\""},
    {2, "answer ANSWER"},
});

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
