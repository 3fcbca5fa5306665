#include <algorithm>
#include <optional>
#include <string>

#include "Scenarios/Acts/Acts.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/App/AppController.h"
#include "Velko/Flows/GlobalKeys.h"

namespace velko::script {

namespace {

using scenarios::World;

std::expected<KeyCombination, std::string> keysIn(const Step& step) {
    const std::string text = step.value.value_or("");
    const auto keys = Keys::parse(text);
    return keys ? std::expected<KeyCombination, std::string>(*keys)
                : std::unexpected(text + " is no key. It is written like control+option+k.");
}

/// A key is pressed while any app is in front.
Done pressGlobally(const Step& step, World& world) {
    const auto keys = keysIn(step);
    if (!keys) {
        return std::unexpected(keys.error());
    }
    if (world.mac().statusItem.menu() != nullptr) {
        return std::unexpected("The broom's menu takes every key.");
    }
    if (!world.mac().hotKeys.press(*keys)) {
        return std::unexpected("Velko does not listen to that key.");
    }
    world.passTime({});
    return {};
}

Done chooseKey(const Step& step, World& world) {
    if (world.velko() == nullptr) {
        return std::unexpected("Velko does not run.");
    }
    std::optional<KeyCombination> wanted;
    if (step.value != "none") {
        const auto keys = keysIn(step);
        if (!keys) {
            return std::unexpected(keys.error());
        }
        wanted = *keys;
    }
    const auto* const row = std::ranges::find(hotKeyActions, step.word, &HotKeyRow::key);
    const auto why = world.velko()->keys().set(row->action, wanted);
    return why ? std::unexpected(*why) : Done();
}

template <bool isTaken>
Done takeAway(const Step& step, World& world) {
    const auto keys = keysIn(step);
    if (!keys) {
        return std::unexpected(keys.error());
    }
    auto& ofOthers = world.mac().hotKeys.ofOthers;
    if (isTaken) {
        ofOthers.insert(*keys);
    } else {
        ofOthers.erase(*keys);
    }
    return {};
}

constexpr auto keyVerbs = std::to_array<MacAct>({
    {Verb::pressKeys, pressGlobally},
    {Verb::setKey, chooseKey},
    {Verb::keysTaken, takeAway<true>},
    {Verb::keysFree, takeAway<false>},
});

}  // namespace

std::span<const MacAct> keyActs() {
    return keyVerbs;
}

}  // namespace velko::script
