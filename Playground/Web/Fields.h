#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VelkoCore/Files/Json.h"

namespace velko::web {

/// Reads the members of a JSON object that came from outside. A member that is missing or has another type
/// gives nothing.
class Fields final {
 public:
    explicit Fields(const Json& body) : object_(std::get_if<Json::Object>(&body.value)) {}

    [[nodiscard]] const Json* find(std::string_view key) const {
        if (object_ == nullptr) {
            return nullptr;
        }
        const auto found = object_->find(key);
        return found == object_->end() ? nullptr : &found->second;
    }
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const {
        const auto* value = get<std::string>(find(key));
        return value == nullptr ? std::nullopt : std::optional(*value);
    }
    /// False if it is missing.
    [[nodiscard]] bool flag(std::string_view key) const {
        const auto* value = get<bool>(find(key));
        return value != nullptr && *value;
    }
    [[nodiscard]] std::optional<std::int64_t> number(std::string_view key) const { return number(find(key)); }
    /// A list of small numbers; nothing if one of its elements is no number.
    [[nodiscard]] std::optional<std::vector<std::size_t>> place(std::string_view key) const {
        constexpr std::size_t deepest = 8;
        const auto* list = get<Json::Array>(find(key));
        if (list == nullptr || list->size() > deepest) {
            return std::nullopt;
        }
        std::vector<std::size_t> place;
        for (const Json& element : *list) {
            const auto index = number(&element);
            if (!index || *index < 0) {
                return std::nullopt;
            }
            place.push_back(static_cast<std::size_t>(*index));
        }
        return place;
    }

    /// A list of texts; nothing if one of its elements is no text.
    [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view key) const {
        const auto* list = get<Json::Array>(find(key));
        if (list == nullptr) {
            return std::nullopt;
        }
        std::vector<std::string> texts;
        for (const Json& element : *list) {
            const auto* value = get<std::string>(&element);
            if (value == nullptr) {
                return std::nullopt;
            }
            texts.push_back(*value);
        }
        return texts;
    }

    [[nodiscard]] static std::optional<std::int64_t> number(const Json* json) {
        if (const auto* negative = get<std::int64_t>(json)) {
            return *negative;
        }
        const auto* positive = get<std::uint64_t>(json);
        return positive != nullptr && std::in_range<std::int64_t>(*positive)
                   ? std::optional(static_cast<std::int64_t>(*positive))
                   : std::nullopt;
    }

 private:
    template <class Value>
    [[nodiscard]] static const Value* get(const Json* json) {
        return json == nullptr ? nullptr : std::get_if<Value>(&json->value);
    }

    const Json::Object* object_;
};

}  // namespace velko::web
