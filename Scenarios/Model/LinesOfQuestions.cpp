#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Model/Heard.h"
#include "VelkoCore/Time/Date.h"

// What the log says of the apps that are there, and of what the user is asked about them.

namespace velko::scenarios::model {

namespace {

using script::Verb;

std::vector<BundleID> listed(std::string_view text) {
    std::vector<BundleID> apps;
    while (!text.empty()) {
        const auto end = std::min(text.find(", "), text.size());
        apps.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return apps;
}

void newcomersCame(Heard& heard) {
    Scene& scene = heard.scene;
    Belief& belief = scene.belief;
    const Layout& layout = belief.layout;
    const auto apps = listed(heard.parts[0]);
    scene.require(std::ranges::is_sorted(apps) && !apps.empty(), "new icons are listed in order", heard.text);
    for (const BundleID& app : apps) {
        const bool isNew = layout.hasCompletedSetup && layout.askAboutNewIcons && belief.isOthers(app) &&
                           !layout.sections.contains(app) && !belief.isWaiting(app) && layout.seenApps &&
                           !layout.seenApps->contains(app);
        scene.require(isNew, "only new icons are asked about", app);
        belief.place(app, Section::tucked);
        belief.layout.inbox.push_back(app);
        if (belief.layout.seenApps) {
            belief.layout.seenApps->insert(app);
        }
    }
    belief.isPutOff = false;
}

void lookedAround(Heard& heard) {
    Belief& belief = heard.scene.belief;
    const auto apps = listed(heard.parts.back());
    heard.scene.require(std::to_string(apps.size()) == heard.parts[0], "the log counts the apps", heard.text);
    heard.scene.require(BundleIDs(apps.begin(), apps.end()) != belief.present, "only changes are logged",
                        heard.text);
    belief.present = BundleIDs(apps.begin(), apps.end());
}

// The note and the autopilot

void noteShown(Heard& heard) {
    Scene& scene = heard.scene;
    scene.require(heard.parts[0] == std::to_string(scene.belief.layout.inbox.size()),
                  "the note asks about all new icons", heard.text);
    scene.require(scene.takesTime() || heard.parts[1] == std::to_string(scene.suggestions().size()),
                  "the note holds all suggestions", heard.text);
    scene.require(!isBroomClick(scene.step) || meaningOfClick(scene) == ClickMeaning::opensNote,
                  "a click opens the note while there is something to ask");
}

void offered(Heard& heard) {
    Scene& scene = heard.scene;
    Layout& layout = scene.belief.layout;
    scene.require(isOfferTime(layout, scene.date()), "offers are made once a week");
    layout.autopilot.offerPending = true;
    layout.autopilot.lastOffered = scene.date();
    scene.belief.isPutOff = false;
}

void leaveAlone(Scene& scene, const BundleID& app) {
    scene.belief.layout.autopilot.snoozedUntil[app] = Calendar().addingDays(30, scene.date());
}

void accepted(Heard& heard) {
    heard.scene.belief.place(heard.parts[0], sectionCalled(heard.parts[1]));
    leaveAlone(heard.scene, heard.parts[0]);
    heard.scene.belief.asked.insert("autopilot");
}

void notNow(Heard& heard) {
    leaveAlone(heard.scene, heard.parts[0]);
}

void kept(Heard& heard) {
    heard.scene.belief.layout.alwaysKeep.insert(heard.parts[0]);
}

void clicksWatched(Heard& heard) {
    auto& since = heard.scene.belief.layout.autopilot.watchingSince;
    heard.scene.require(!since, "clicks are watched anew only once");
    since = heard.scene.date();
}

void askedToQuit(Heard& heard) {
    const std::string& control = heard.scene.step.control;
    if (heard.scene.step.verb == Verb::accept || control.starts_with("accept:")) {
        const AppController* velko = heard.scene.world.velko();
        for (const auto& [app, until] : velko->values().layout.autopilot.snoozedUntil) {
            if (control == "accept:" + app || heard.scene.step.app == app) {
                leaveAlone(heard.scene, app);
            }
        }
    }
}

constexpr auto questionLines = std::to_array<LineRow>({
    {"autopilot", "offering 1 suggestion", offered},
    {"autopilot", "offering * suggestions", offered},
    {"autopilot", "accepted: * -> *", accepted},
    {"autopilot", "not now: *", notNow},
    {"autopilot", "always keep: *", kept},
    {"autopilot", "click history started: suggestions begin in 14 days", clicksWatched},
    {"health", "asked * to quit", askedToQuit},
    {"inbox", "new icons, tucked until answered: *", newcomersCame},
    {"inventory", "* apps with icons: *", lookedAround},
    {"inventory", "* apps with icons (light rescan): *", lookedAround},
    {"note", "shown: * new, * suggestions", noteShown},
});

}  // namespace

std::span<const LineRow> linesOfQuestions() {
    return questionLines;
}

}  // namespace velko::scenarios::model
