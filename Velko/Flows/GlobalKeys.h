#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Keys/HotKeySettings.h"
#include "VelkoCore/Keys/KeyCombination.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class HotKeys;
class Log;

/// The user's keys that work while any app is in front. A key that the system refuses, or whose entry in the
/// layout is wrong, does nothing; the log and the settings say why, and the others work. Main thread; owned
/// by the controller.
class GlobalKeys final : private NonCopyable {
 public:
    /// `pressed` is called each time the user presses the key of an action. All references outlive this.
    GlobalKeys(FlowHost& host, HotKeys& hotKeys, Log& log, std::function<void(HotKeyAction)> pressed);

    /// Takes the keys that the layout names, and tells what is wrong with them. To be called when the layout
    /// comes from its file.
    void follow();

    /// Takes the keys of the actions that are offered. To be called when that may have changed.
    void takeAll();

    /// Gives an action another key, or none, and saves that. If the key cannot be had, nothing changes.
    /// Returns why not, in words for people.
    [[nodiscard]] std::optional<std::string> set(HotKeyAction action,
                                                 const std::optional<KeyCombination>& keys);

    /// Gives all keys back until the subscription ends, so that the user can press one to choose it.
    [[nodiscard]] Subscription pause();

    /// Whether the action does anything. Only then Velko takes its key.
    [[nodiscard]] bool isOffered(HotKeyAction action) const;

    /// The key of an action, if its entry in the layout can be understood.
    [[nodiscard]] std::optional<KeyCombination> keysOf(HotKeyAction action) const;

 private:
    [[nodiscard]] std::optional<std::string> whyNot(HotKeyAction action, const KeyCombination& keys) const;
    [[nodiscard]] std::optional<std::string> take(HotKeyAction action, const KeyCombination& keys);
    /// Whether the action has its key now, or will have it again after the pause.
    [[nodiscard]] bool isHeld(HotKeyAction action) const;
    void resume();

    FlowHost& host_;
    HotKeys& hotKeys_;
    Log& log_;
    std::function<void(HotKeyAction)> pressed_;
    std::map<HotKeyAction, Subscription> taken_;
    std::shared_ptr<int> pauses_ = std::make_shared<int>(0);
};

}  // namespace velko
