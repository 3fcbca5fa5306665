#include "Velko/Settings/KeysPage.h"

#include <chrono>
#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Flows/GlobalKeys.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Ports/HotKeys.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/Settings/SettingsPages.h"
#include "VelkoCore/Layout/Switches.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

/// Nobody wants Velko to wait for keys for longer, with its own keys off.
constexpr std::chrono::seconds recordingTime{10};

bool isPlain(const KeyCombination& keys, KeyCode key) {
    return keys == KeyCombination{.key = key};
}

}  // namespace

KeysPage::KeysPage(const FaceParts& parts, std::function<void()> changed)
    : parts_(parts), changed_(std::move(changed)) {}

void KeysPage::leave() {
    layoutChanges_.end();
    refusals_.clear();
    if (recorded_) {
        stop();
    }
}

void KeysPage::press(HotKeyAction action) {
    const bool wasRecorded = recorded_ == action;
    stop();
    if (!wasRecorded) {
        refusals_.erase(action);
        recorded_ = action;
        pause_ = parts_.controller.keys().pause();
        patience_ = parts_.platform.mainThread.after(recordingTime, [this] {
            stop();
            changed_();
        });
        parts_.ports.surfaces.announce("Press the keys. Escape cancels, Delete clears.");
    }
    changed_();
}

void KeysPage::record(HotKeyAction action, const KeyCombination& keys) {
    stop();
    if (isPlain(keys, Keys::deleteBackwards) || isPlain(keys, Keys::deleteForwards)) {
        set(action, std::nullopt);
    } else if (!isPlain(keys, Keys::escape)) {
        set(action, keys);
    }
    changed_();
}

void KeysPage::stop() {
    recorded_.reset();
    patience_.cancel();
    pause_.end();
}

void KeysPage::set(HotKeyAction action, const std::optional<KeyCombination>& keys) {
    refusals_.erase(action);
    if (auto why = parts_.controller.keys().set(action, keys)) {
        parts_.ports.surfaces.announce(*why);
        refusals_.emplace(action, *std::move(why));
    } else {
        parts_.ports.surfaces.announce(keys ? describe(parts_.ports.hotKeys, *keys) : "No key");
    }
    changed_();
}

view::Node KeysPage::row(const HotKeyRow& row, bool isLocked) {
    const HotKeyAction action = row.action;
    const std::string id(row.key);
    const std::string title(row.title);
    const auto keys = parts_.controller.keys().keysOf(action);
    const bool isRecording = recorded_ == action;
    const std::string shown = keys ? describe(parts_.ports.hotKeys, *keys) : "Choose a Key…";
    view::Node recorder{
        .id = "key:" + id,
        .label = title + ", " + (isRecording ? "press the keys" : (keys ? shown : "no key, choose one")),
        .help = "Escape cancels, Delete clears.",
        .isEnabled = !isLocked,
        .width = 150,
        .content = view::KeyRecorder{
            .title = isRecording ? "Press the Keys…" : shown,
            .isRecording = isRecording,
            .press = [this, action] { press(action); },
            .record = [this, action](const KeyCombination& held) { record(action, held); }}};
    view::Node clear = view::button("clear:" + id, {.symbol = "xmark.circle.fill", .press = [this, action] {
                                                        stop();
                                                        set(action, std::nullopt);
                                                    }});
    clear.label = "No key for: " + title;
    clear.isEnabled = !isLocked && keys.has_value();
    std::vector<view::Node> children{
        view::row("row:" + id, {view::text("title:" + id, title), view::spacer("gap:" + id),
                                std::move(recorder), std::move(clear)})};
    const auto& faults = parts_.controller.values().keyFaults;
    const auto refusal = refusals_.find(action);
    const auto fault = faults.find(action);
    if (refusal != refusals_.end()) {
        children.push_back(view::explanation("why:" + id, refusal->second));
    } else if (fault != faults.end()) {
        children.push_back(view::explanation("why:" + id, fault->second));
    }
    return view::column("action:" + id, std::move(children), 4);
}

view::Node KeysPage::content() {
    if (!layoutChanges_.isActive()) {
        layoutChanges_ = parts_.ports.hotKeys.observeLayout([this] { changed_(); });
    }
    AppController& controller = parts_.controller;
    const bool isLocked = controller.values().problems.layoutUnreadable.has_value();
    std::vector<view::Node> rows;
    rows.reserve(hotKeyActions.size());
    for (const HotKeyRow& each : hotKeyActions) {
        if (controller.keys().isOffered(each.action)) {
            rows.push_back(row(each, isLocked));
        }
    }
    view::Node inMenu{.id = std::string(Switches::row(Switch::searchInMenu).name),
                      .isEnabled = !isLocked,
                      .content = view::Toggle{.title = "Offer “Search…” in the broom's menu",
                                              .isOn = controller.values().layout.searchInMenu,
                                              .change = [&controller](bool on) {
                                                  controller.preferences().setSwitch(Switch::searchInMenu,
                                                                                     on);
                                              }}};
    std::vector<view::Node> children;
    if (isLocked) {
        children.push_back(view::text("keys:locked",
                                      "The keys are written in your layout file. Until it can be read, there "
                                      "is nothing to change here."));
    }
    children.push_back(
        {.id = "keys", .content = view::Group{.title = "From any app", .children = std::move(rows)}});
    children.push_back(view::explanation(
        "keys:what",
        "Press a button, then the keys. Escape cancels, Delete clears. The keys work while any "
        "app is in front, and no other app gets them."));
    children.push_back(
        {.id = "searching",
         .content =
             view::Group{.title = "Searching",
                         .children = {SettingsPages::managed(
                             std::move(inMenu), controller.values().managed.sets(Switch::searchInMenu))}}});
    return view::column("page:keys", std::move(children), 14);
}

}  // namespace velko
