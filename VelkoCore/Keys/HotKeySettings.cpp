#include "VelkoCore/Keys/HotKeySettings.h"

#include <algorithm>
#include <cstdint>
#include <expected>
#include <utility>
#include <variant>

namespace velko {

const HotKeyRow& rowOf(HotKeyAction action) noexcept {
    return *std::ranges::find(hotKeyActions, action, &HotKeyRow::action);
}

}  // namespace velko

namespace velko::HotKeySettings {

namespace {

const Json* memberOf(const Json::Object& object, std::string_view key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &found->second;
}

std::optional<KeyCode> keyCodeIn(const Json* json) {
    const auto* const number = json == nullptr ? nullptr : std::get_if<std::uint64_t>(&json->value);
    return number != nullptr && *number <= KeyCombination::lastKey
               ? std::optional(static_cast<KeyCode>(*number))
               : std::nullopt;
}

/// The combination that an entry stands for, or what is wrong with the entry.
std::expected<KeyCombination, std::string> combinationIn(const Json& entry) {
    const auto* const object = std::get_if<Json::Object>(&entry.value);
    if (object == nullptr) {
        return std::unexpected("expected an object");
    }
    const auto key = keyCodeIn(memberOf(*object, "key"));
    if (!key) {
        return std::unexpected("key: expected a number from 0 to 127");
    }
    KeyCombination keys{.key = *key};
    const Json* const modifiers = memberOf(*object, "modifiers");
    if (modifiers == nullptr) {
        return keys;
    }
    const auto* const list = std::get_if<Json::Array>(&modifiers->value);
    if (list == nullptr) {
        return std::unexpected("modifiers: expected a list");
    }
    for (const Json& each : *list) {
        const auto* const word = std::get_if<std::string>(&each.value);
        const auto* const held = word == nullptr
                                     ? Keys::heldKeys.end()
                                     : std::ranges::find(Keys::heldKeys, *word, &Keys::HeldKey::name);
        if (held == Keys::heldKeys.end()) {
            return std::unexpected(R"(modifiers: expected "control", "option", "shift" or "command")");
        }
        keys.*(held->member) = true;
    }
    return keys;
}

Json entryOf(const KeyCombination& keys) {
    Json::Array modifiers;
    for (const Keys::HeldKey& held : Keys::heldKeys) {
        if (keys.*(held.member)) {
            modifiers.push_back({std::string(held.name)});
        }
    }
    return {Json::Object{{"key", {std::uint64_t{keys.key}}}, {"modifiers", {std::move(modifiers)}}}};
}

}  // namespace

Found read(const Json& settings) {
    Found found;
    if (settings.isNull()) {
        return found;
    }
    const auto* const object = std::get_if<Json::Object>(&settings.value);
    if (object == nullptr) {
        found.faults.emplace_back("hotKeys: expected an object");
        return found;
    }
    for (const HotKeyRow& row : hotKeyActions) {
        const Json* const entry = memberOf(*object, row.key);
        if (entry == nullptr || entry->isNull()) {
            continue;
        }
        if (auto keys = combinationIn(*entry)) {
            found.keys.emplace(row.action, *keys);
        } else {
            found.faults.push_back("hotKeys." + std::string(row.key) + ": " + keys.error());
        }
    }
    return found;
}

Json with(Json settings, HotKeyAction action, const std::optional<KeyCombination>& keys) {
    auto* object = std::get_if<Json::Object>(&settings.value);
    if (object == nullptr) {
        object = &settings.value.emplace<Json::Object>();
    }
    const std::string name(rowOf(action).key);
    if (keys) {
        object->insert_or_assign(name, entryOf(*keys));
    } else {
        object->erase(name);
    }
    return object->empty() ? Json{} : settings;
}

}  // namespace velko::HotKeySettings
