#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "Velko/App/FaceParts.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Keys/HotKeySettings.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// The page of the settings where the user chooses keys. While one is being recorded, Velko's keys do
/// nothing. Main thread.
class KeysPage final : private NonCopyable {
 public:
    /// `changed` is called when the page looks different.
    KeysPage(const FaceParts& parts, std::function<void()> changed);

    [[nodiscard]] view::Node content();

    /// The user has gone to another page or has closed the window.
    void leave();

 private:
    void press(HotKeyAction action);
    void record(HotKeyAction action, const KeyCombination& keys);
    void stop();
    void set(HotKeyAction action, const std::optional<KeyCombination>& keys);
    [[nodiscard]] view::Node row(const HotKeyRow& row, bool isLocked);

    FaceParts parts_;
    std::function<void()> changed_;
    std::optional<HotKeyAction> recorded_;          ///< whose key the next press chooses
    std::map<HotKeyAction, std::string> refusals_;  ///< why the last choice did not work
    Subscription pause_;
    Task patience_;
    Subscription layoutChanges_;  ///< while the page shows
};

}  // namespace velko
