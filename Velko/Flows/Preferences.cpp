#include "Velko/Flows/Preferences.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Apps/ChangeWords.h"
#include "Velko/Flows/PopOut.h"
#include "Velko/Flows/ProcessWatch.h"
#include "Velko/Flows/Questions.h"
#include "Velko/Ports/Desktop.h"

namespace velko {

namespace {

std::string word(bool on) {
    return on ? "true" : "false";
}

std::string describe(const RevealSettings& reveal) {
    return std::to_string(reveal.autoTuckSeconds) + ", " + std::string(name(reveal.notchedStyle)) + ", " +
           std::string(name(reveal.otherStyle)) + ", " + word(reveal.hover);
}

}  // namespace

Preferences::Preferences(FlowHost& host, Log& log, LoginItem& loginItem, Affected affected)
    : host_(host), log_(log), loginItem_(loginItem), affected_(std::move(affected)) {}

bool Preferences::isRefused(bool isManaged, std::string_view what) const {
    if (isManaged) {
        log_.log("managed", "stays as it is: " + std::string(what));
    }
    return isManaged;
}

void Preferences::setNewIconDefault(Section section) {
    if (isRefused(host_.values().managed.newIconDefault.has_value(), "new icons")) {
        return;
    }
    host_.edit(Saving::now, [&](Layout& layout) { layout.newIconDefault = section; });
    log_.log("settings", "new icons go to " + std::string(name(section)));
    host_.apply({.reason = "new icon default"});
    affected_.autopilot.settle();
}

void Preferences::setSwitch(Switch which, bool on) {
    const std::string_view words = Switches::row(which).words;
    if (isRefused(host_.values().managed.sets(which), Switches::row(which).name)) {
        return;
    }
    if (words.empty()) {
        Layout edited = host_.values().layout;
        Switches::set(edited, which, on);
        setReveal(edited.reveal);
        return;
    }
    if (which == Switch::popOutOnChange && !on) {
        affected_.popOut.endAll();
        host_.apply({.reason = "pop out off"});
    }
    const bool movesWaiting = which == Switch::leaveNewIconsOut;
    host_.edit(Saving::now, [&](Layout& layout) {
        Switches::set(layout, which, on);
        if (movesWaiting) {
            layout.moveWaiting();
        }
    });
    log_.log("settings", std::string(words) + " " + word(on));
    if (movesWaiting) {
        host_.apply({.reason = "new icons wait"});
    }
    if (which == Switch::showLiveActivities) {
        affected_.liveActivity.settingChanged();
    } else if (which == Switch::autopilot) {
        affected_.autopilot.settle();
    } else if (which == Switch::presenting) {
        affected_.presentingChanged();
    }
}

void Preferences::setAlwaysKeep(const BundleID& bundleID, bool keep) {
    if (isRefused(host_.values().managed.keeps(bundleID), "always keep " + bundleID)) {
        return;
    }
    host_.edit(ChangeWords::kept(affected_.autopilot.nameOf(bundleID), keep), [&](Layout& layout) {
        if (keep) {
            layout.alwaysKeep.insert(bundleID);
        } else {
            layout.alwaysKeep.erase(bundleID);
        }
    });
    log_.log("settings", "always keep " + bundleID + " " + word(keep));
    affected_.autopilot.settle();
}

void Preferences::setPopsOut(const BundleID& bundleID, bool popsOut) {
    if (isRefused(host_.values().managed.neverPopOut.contains(bundleID),
                  "show when it changes " + bundleID)) {
        return;
    }
    host_.edit(Saving::now, [&](Layout& layout) { layout.setPopsOut(bundleID, popsOut); });
    log_.log("settings", "show when it changes " + bundleID + " " + word(popsOut));
    if (!popsOut && host_.values().poppedOut.contains(bundleID)) {
        affected_.popOut.forget(bundleID);
        host_.apply({.reason = "pop out off"});
    }
}

void Preferences::setReveal(RevealSettings reveal) {
    reveal.autoTuckSeconds = RevealSettings::normalisedAutoTuck(reveal.autoTuckSeconds);
    const RevealSettings allowed = host_.values().managed.over(reveal);
    static_cast<void>(isRefused(allowed != reveal, "a reveal setting"));
    reveal = allowed;
    host_.edit(Saving::now, [&](Layout& layout) { layout.reveal = reveal; });
    log_.log("settings", "reveal settings " + describe(reveal));
    affected_.revealChanged();
}

void Preferences::setShowAllFromWidth(std::optional<std::int64_t> points) {
    const auto wanted = points && *points > 0 ? points : std::nullopt;
    host_.edit(Saving::now, [&](Layout& layout) { layout.showAllFromWidth = wanted; });
    log_.log("settings", "show everything on displays from " +
                             (wanted ? std::to_string(*wanted) + " points" : std::string("no width")));
    affected_.wideDisplaysChanged();
}

void Preferences::setLaunchAtLogin(bool on) {
    const auto done = loginItem_.setEnabled(on);
    log_.log("settings", done ? "launch at login " + word(on) : "launch at login failed: " + done.error());
    host_.set(&AppValues::loginFailure, done ? std::nullopt : std::optional(done.error()));
    host_.set(&AppValues::loginRevision, host_.values().loginRevision + 1);
}

}  // namespace velko
