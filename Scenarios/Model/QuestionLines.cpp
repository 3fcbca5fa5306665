#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Model/LogLines.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Time/Date.h"

// Lines of the log about the apps that run, and about questions to the user.

namespace velko::scenarios::model {

namespace {

using script::Verb;
using namespace std::chrono_literals;

std::vector<BundleID> listed(std::string_view text) {
    std::vector<BundleID> apps;
    while (!text.empty()) {
        const auto end = std::min(text.find(", "), text.size());
        apps.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return apps;
}

template <Section place>
void newcomersCame(LogLine& line) {
    StepCheck& check = line.check;
    Expected& expected = check.expected;
    const Layout& layout = expected.layout;
    const auto apps = listed(line.parts[0]);
    check.require(std::ranges::is_sorted(apps) && !apps.empty(), "new icons are listed in order", line.text);
    check.require((place == Section::bar) == layout.leaveNewIconsOut,
                  "new icons wait where the user wants them to", line.text);
    for (const BundleID& app : apps) {
        const bool isNew = layout.hasCompletedSetup && layout.askAboutNewIcons && expected.isOthers(app) &&
                           !layout.sections.contains(app) && !expected.isWaiting(app) && layout.seenApps &&
                           !layout.seenApps->contains(app);
        check.require(isNew, "only new icons are asked about", app);
        expected.place(app, place);
        expected.layout.inbox.push_back(app);
        if (expected.layout.seenApps) {
            expected.layout.seenApps->insert(app);
        }
    }
    expected.isPutOff = false;
}

void newcomersLeft(LogLine& line) {
    StepCheck& check = line.check;
    Layout& layout = check.expected.layout;
    for (const BundleID& app : listed(line.parts[0])) {
        const auto since = layout.waitingGoneSince.find(app);
        const bool isLong = since == layout.waitingGoneSince.end()
                                ? check.takesTime()
                                : check.date() - since->second >= std::chrono::days(7) - 2s;
        check.require(check.expected.isWaiting(app) && isLong,
                      "only those that were away for a week are no longer asked about", app);
        std::erase(layout.inbox, app);
        layout.sections.erase(app);
    }
}

void lookedAround(LogLine& line) {
    Expected& expected = line.check.expected;
    const auto apps = listed(line.parts.back());
    line.check.require(std::to_string(apps.size()) == line.parts[0], "the log counts the apps", line.text);
    line.check.require(BundleIDs(apps.begin(), apps.end()) != expected.present, "only changes are logged",
                       line.text);
    expected.present = BundleIDs(apps.begin(), apps.end());
}

// The note and the autopilot

void noteShown(LogLine& line) {
    StepCheck& check = line.check;
    check.require(line.parts[0] == std::to_string(check.expected.layout.inbox.size()),
                  "the note asks about all new icons", line.text);
    check.require(check.takesTime() || line.parts[1] == std::to_string(check.suggestions().size()),
                  "the note holds all suggestions", line.text);
    // While the button is held, the time of what is out may end, and the note opens instead.
    check.require(!isBroomClick(check.step) || check.hasJustTucked() ||
                      meaningOfClick(check) == ClickMeaning::opensNote,
                  "a click opens the note while there is something to ask");
}

void offered(LogLine& line) {
    StepCheck& check = line.check;
    Layout& layout = check.expected.layout;
    check.require(isOfferTime(layout, check.date()), "offers are made once a week");
    layout.autopilot.offerPending = true;
    layout.autopilot.lastOffered = check.date();
    check.expected.isPutOff = false;
}

void leaveAlone(StepCheck& check, const BundleID& app) {
    check.expected.layout.autopilot.snoozedUntil[app] = Calendar().addingDays(30, check.date());
}

void accepted(LogLine& line) {
    line.check.expected.place(line.parts[0], sectionCalled(line.parts[1]));
    leaveAlone(line.check, line.parts[0]);
    line.check.expected.asked.insert("autopilot");
}

void notNow(LogLine& line) {
    leaveAlone(line.check, line.parts[0]);
}

void kept(LogLine& line) {
    line.check.expected.layout.alwaysKeep.insert(line.parts[0]);
}

void askedAgain(LogLine& line) {
    line.check.expected.layout.autopilot.snoozedUntil.erase(line.parts[0]);
}

void clicksWatched(LogLine& line) {
    auto& since = line.check.expected.layout.autopilot.watchingSince;
    line.check.require(!since, "clicks are watched anew only once");
    since = line.check.date();
}

void askedToQuit(LogLine& line) {
    const std::string& control = line.check.step.control;
    if (line.check.step.verb == Verb::accept || control.starts_with("accept:")) {
        const AppController* velko = line.check.world.velko();
        for (const auto& [app, until] : velko->values().layout.autopilot.snoozedUntil) {
            if (control == "accept:" + app || line.check.step.app == app) {
                leaveAlone(line.check, app);
            }
        }
    }
}

constexpr auto questionRows = std::to_array<LineRow>({
    {"autopilot", "offering 1 suggestion", offered},
    {"autopilot", "offering * suggestions", offered},
    {"autopilot", "accepted: * -> *", accepted, By::user},
    {"autopilot", "not now: *", notNow, By::user},
    {"autopilot", "always keep: *", kept, By::user},
    {"autopilot", "asks again: *", askedAgain, By::user},
    {"autopilot", "click history started: suggestions begin in 14 days", clicksWatched},
    {"health", "asked * to quit", askedToQuit},
    {"inbox", "new icons, out until answered: *", newcomersCame<Section::bar>},
    {"inbox", "new icons, tucked until answered: *", newcomersCame<Section::tucked>},
    {"inbox", "away for a week, no longer asked about: *", newcomersLeft},
    {"inventory", "* apps with icons: *", lookedAround},
    {"inventory", "* apps with icons (light rescan): *", lookedAround},
    {"note", "shown: * new, * suggestions", noteShown},
});

}  // namespace

std::span<const LineRow> questionLines() {
    return questionRows;
}

}  // namespace velko::scenarios::model
