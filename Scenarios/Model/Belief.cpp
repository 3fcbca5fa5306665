#include "Scenarios/Model/Belief.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace velko::scenarios::model {

namespace {

constexpr std::array<std::string_view, 2> systemItems{"com.apple.MenuBarAgent", "com.apple.systemuiserver"};

}  // namespace

std::string nameOf(Section section) {
    return section == Section::bar ? "bar" : section == Section::tucked ? "tucked" : "buried";
}

Section sectionCalled(const std::string& name) {
    return name == "bar" ? Section::bar : name == "tucked" ? Section::tucked : Section::buried;
}

// What is out

std::string Out::text() const {
    if (!opened.empty()) {
        return "opening " + opened + " (from " + Out{.reach = reach}.text() + ")";
    }
    switch (reach) {
        case Reach::barOnly: return "collapsed";
        case Reach::tuckedToo: return "revealed";
        case Reach::buriedToo: break;
    }
    return "revealed with buried";
}

Out Out::after(const std::string& event) const {
    if (event.starts_with("peek ")) {
        return {.reach = reach, .opened = event.substr(5)};
    }
    if (event == "peekEnded") {
        return {.reach = reach};
    }
    if (!opened.empty()) {
        return event == "autoTuck" ? *this : Out();  // a click ends the opening and what was out before
    }
    if (event == "toggle") {
        return {.reach = isRevealed() ? Reach::barOnly : Reach::tuckedToo};
    }
    if (event == "toggleWithBuried") {
        return {.reach = reach == Reach::buriedToo ? Reach::barOnly : Reach::buriedToo};
    }
    return {};
}

// Who shows

Section Belief::sectionOf(const BundleID& app) const {
    const auto placed = layout.sections.find(app);
    return placed == layout.sections.end() ? layout.newIconDefault : placed->second;
}

bool Belief::isWaiting(const BundleID& app) const {
    return std::ranges::count(layout.inbox, app) > 0;
}

bool Belief::isOthers(const BundleID& app) const {
    return app != own && std::ranges::count(systemItems, app) == 0;
}

bool Belief::isAnyHideable() const {
    return std::ranges::any_of(
        present, [this](const BundleID& app) { return isOthers(app) && sectionOf(app) != Section::bar; });
}

bool Belief::isPlaceOut(Section section) const {
    if (section == Section::bar) {
        return true;
    }
    // On the shelf, icons are out beside the bar.
    return section == Section::tucked && style == RevealStyle::inline_ && out.reach == Out::Reach::tuckedToo;
}

BundleIDs Belief::known() const {
    BundleIDs apps = present;
    for (const auto& [app, section] : layout.sections) {
        apps.insert(app);
    }
    return apps;
}

bool Belief::isEverythingOut() const {
    if (!isWell()) {
        return true;
    }
    if (alone) {
        return false;
    }
    if ((isActivityOn && !isActivityDismissed) ||
        (style == RevealStyle::inline_ && out.reach == Out::Reach::buriedToo)) {
        return true;
    }
    return std::ranges::all_of(known(), [this](const BundleID& app) {
        return std::ranges::count(systemItems, app) > 0 || isPlaceOut(sectionOf(app));
    });
}

std::optional<BundleIDs> Belief::shown() const {
    if (isEverythingOut()) {
        return std::nullopt;
    }
    BundleIDs apps(systemItems.begin(), systemItems.end());
    apps.insert(own);
    if (alone) {
        apps.insert(*alone);
        return apps;
    }
    for (const BundleID& app : known()) {
        if (isPlaceOut(sectionOf(app))) {
            apps.insert(app);
        }
    }
    if (layout.popOutOnChange) {
        for (const auto& [app, end] : popped) {
            apps.insert(app);
        }
    }
    if (!out.opened.empty()) {
        apps.insert(out.opened);
    }
    return apps;
}

std::string Belief::planText() const {
    const auto apps = shown();
    if (!apps) {
        return "show all";
    }
    std::string text = "allow ";
    for (const BundleID& app : *apps) {
        text += (text.size() > 6 ? ", " : "") + app;
    }
    return text;
}

void Belief::place(const BundleID& app, Section section) {
    layout.sections[app] = section;
    std::erase(layout.inbox, app);
}

}  // namespace velko::scenarios::model
