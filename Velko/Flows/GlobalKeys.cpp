#include "Velko/Flows/GlobalKeys.h"

#include <algorithm>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Ports/HotKeys.h"

namespace velko {

namespace {

std::string titleOf(HotKeyAction action) {
    return std::string(rowOf(action).title);
}

}  // namespace

GlobalKeys::GlobalKeys(FlowHost& host, HotKeys& hotKeys, Log& log, std::function<void(HotKeyAction)> pressed)
    : host_(host), hotKeys_(hotKeys), log_(log), pressed_(std::move(pressed)) {}

void GlobalKeys::follow() {
    for (const std::string& fault : HotKeySettings::read(host_.values().layout.hotKeys).faults) {
        log_.log("keys", "ignored: " + fault);
    }
    takeAll();
}

void GlobalKeys::takeAll() {
    taken_.clear();
    if (*pauses_ > 0) {
        return;
    }
    std::map<HotKeyAction, std::string> faults;
    const auto found = HotKeySettings::read(host_.values().layout.hotKeys);
    for (const auto& [action, keys] : found.keys) {
        if (!isOffered(action)) {
            continue;
        }
        auto why = whyNot(action, keys);
        why = why ? why : take(action, keys);
        if (why) {
            faults.emplace(action, *std::move(why));
        }
    }
    for (const auto& [action, why] : faults) {
        const auto& before = host_.values().keyFaults;
        const auto known = before.find(action);
        if (known == before.end() || known->second != why) {
            log_.log("keys", "no key for " + std::string(rowOf(action).key) + ": " + why);
        }
    }
    host_.set(&AppValues::keyFaults, std::move(faults));
}

std::optional<std::string> GlobalKeys::set(HotKeyAction action, const std::optional<KeyCombination>& keys) {
    const bool hasIt = keys && keys == keysOf(action) && taken_.contains(action);
    if (keys && !hasIt) {
        auto why = whyNot(action, *keys);
        if (!why && isOffered(action)) {
            why = take(action, *keys);
        }
        if (why) {
            return why;
        }
    } else if (!keys) {
        taken_.erase(action);
    }
    auto faults = host_.values().keyFaults;
    faults.erase(action);
    host_.set(&AppValues::keyFaults, std::move(faults));
    host_.edit(Saving::now, [&](Layout& layout) {
        layout.hotKeys = HotKeySettings::with(std::move(layout.hotKeys), action, keys);
    });
    if (*pauses_ > 0) {
        taken_.clear();  // the end of the pause takes it again
    }
    log_.log("keys", std::string(rowOf(action).key) + ": " + (keys ? describe(hotKeys_, *keys) : "none"));
    return std::nullopt;
}

std::optional<std::string> GlobalKeys::whyNot(HotKeyAction action, const KeyCombination& keys) const {
    if (auto why = Keys::whyForbidden(keys, nameOf(hotKeys_, keys.key))) {
        return why;
    }
    const auto found = HotKeySettings::read(host_.values().layout.hotKeys).keys;
    const auto other = std::ranges::find_if(found, [&](const auto& each) {
        return each.first != action && each.second == keys && isHeld(each.first);
    });
    const std::string shown = describe(hotKeys_, keys);
    if (other != found.end()) {
        return shown + " is already the key for \u201C" + titleOf(other->first) + "\u201D.";
    }
    return hotKeys_.isOfSystem(keys)
               ? std::optional(shown + " is a shortcut of macOS. You can switch that off in System Settings.")
               : std::nullopt;
}

bool GlobalKeys::isHeld(HotKeyAction action) const {
    const bool waits = *pauses_ > 0 && !host_.values().keyFaults.contains(action);
    return waits || taken_.contains(action);
}

/// Keeps what the action has now if the system refuses.
std::optional<std::string> GlobalKeys::take(HotKeyAction action, const KeyCombination& keys) {
    auto taken = hotKeys_.add(keys, [this, action] { pressed_(action); });
    if (taken) {
        taken_.insert_or_assign(action, *std::move(taken));
        return std::nullopt;
    }
    const std::string shown = describe(hotKeys_, keys);
    return taken.error() == HotKeys::Refusal::taken ? shown + " is taken by another app."
                                                    : "macOS does not give " + shown + " to Velko.";
}

bool GlobalKeys::isOffered(HotKeyAction action) const {
    return action != HotKeyAction::presenting || host_.values().layout.offersPresenting;
}

Subscription GlobalKeys::pause() {
    ++*pauses_;
    taken_.clear();
    return Subscription([this, weak = std::weak_ptr(pauses_)] {
        if (!weak.expired()) {
            resume();
        }
    });
}

void GlobalKeys::resume() {
    if (--*pauses_ == 0) {
        takeAll();
    }
}

std::optional<KeyCombination> GlobalKeys::keysOf(HotKeyAction action) const {
    const auto found = HotKeySettings::read(host_.values().layout.hotKeys).keys;
    const auto keys = found.find(action);
    return keys == found.end() ? std::nullopt : std::optional(keys->second);
}

}  // namespace velko
