#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "Simulator/Desktop/SimulatedObservers.h"
#include "Velko/Ports/HotKeys.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// The keyboard of a simulated Mac, and who has which keys.
class SimulatedHotKeys final : public HotKeys {
 public:
    explicit SimulatedHotKeys(MainThread& mainThread) : presses_(mainThread), layoutChanges_(mainThread) {}

    [[nodiscard]] std::expected<Subscription, Refusal> add(const KeyCombination& keys,
                                                           std::function<void()> pressed) override {
        if (fails) {
            return std::unexpected(Refusal::failed);
        }
        if (ofOthers.contains(keys) || !registered_->insert(keys).second) {
            return std::unexpected(Refusal::taken);
        }
        auto hearing = std::make_shared<Subscription>(
            presses_.observe([keys, pressed = std::move(pressed)](const KeyCombination& heard) {
                if (heard == keys) {
                    pressed();
                }
            }));
        return Subscription([hearing, keys, registered = std::weak_ptr(registered_)] {
            hearing->end();
            if (const auto still = registered.lock()) {
                still->erase(keys);
            }
        });
    }

    [[nodiscard]] bool isOfSystem(const KeyCombination& keys) const override {
        return ofSystem.contains(keys);
    }

    [[nodiscard]] std::optional<std::string> typedBy(KeyCode key) const override {
        const auto typed = layout_.find(key);
        return typed == layout_.end() ? std::nullopt : std::optional(typed->second);
    }

    [[nodiscard]] Subscription observeLayout(std::function<void()> handler) override {
        return layoutChanges_.observe([handler = std::move(handler)](const auto&) { handler(); });
    }

    /// The user presses a combination. Returns whether Velko hears of it.
    bool press(const KeyCombination& keys) {
        if (ofSystem.contains(keys) || !registered_->contains(keys)) {
            return false;
        }
        presses_.tell(keys);
        return true;
    }

    /// The user chooses another layout, in which the keys type these texts. For keys that are not among them
    /// the layout does not say.
    void setLayout(std::map<KeyCode, std::string> typed) {
        layout_ = std::move(typed);
        layoutChanges_.tell({});
    }

    /// What Velko has taken.
    [[nodiscard]] const std::set<KeyCombination>& registered() const { return *registered_; }
    /// Velko has ended, and its keys with it.
    void forget() { registered_->clear(); }

    std::set<KeyCombination> ofOthers;  ///< another app has these for itself
    std::set<KeyCombination> ofSystem;  ///< shortcuts of the system that are switched on
    bool fails = false;                 ///< the system refuses every combination and does not say why

 private:
    struct LayoutChange {};

    SimulatedObservers<KeyCombination> presses_;
    SimulatedObservers<LayoutChange> layoutChanges_;
    std::shared_ptr<std::set<KeyCombination>> registered_ = std::make_shared<std::set<KeyCombination>>();
    std::map<KeyCode, std::string> layout_;
};

}  // namespace velko
