#pragma once

#include <concepts>
#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "VelkoCore/Files/Json.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Time/Date.h"

/// Reading and writing records as JSON objects. Internal to the room: include it in .cpp files only.
///
/// A record is described once, by a specialisation that lists its keys and members and says what a
/// missing key means; `decodeRecord` and `encodeRecord` do the rest:
///
///     template <>
///     struct JsonRecord<Pet> {
///         static constexpr std::tuple fields{JsonField{"name", &Pet::name}, JsonField{"age", &Pet::age}};
///         static constexpr MissingKeys missingKeys = MissingKeys::fail;
///         static void normalise(Pet& pet);  // optional: called after each reading
///     };
///
/// Members may be bool, std::int64_t, std::string, Section, RevealStyle, Date, Json as it is, other described
/// records, and vectors, sets, optionals and maps (by std::string) of those. Other types get a pair of
/// `readJson`/`writeJson`. Unknown keys are ignored, sets are written in their order, and a member that is
/// an absent optional is not written. Nor is an addition (`isAddition`) while it has its default.
namespace velko {

/// What a missing or null key does to the member that it belongs to.
enum class MissingKeys {
    keepValue,  ///< the member keeps the value that it had before reading
    fail,       ///< only an optional member may be missing; it becomes absent
};

template <class Record>
struct JsonRecord;

template <class Record, class Member>
struct JsonField {
    std::string_view key;
    Member Record::* member;
    bool isAddition = false;  ///< older builds lack it: it is not written while it has its default
};

template <class T>
concept DescribedRecord = requires {
    JsonRecord<T>::fields;
    { JsonRecord<T>::missingKeys } -> std::convertible_to<MissingKeys>;
};

/// Where in a document a value was not what it had to be, and what was wrong.
struct JsonMismatch {
    std::string path;  ///< such as "reveal.hover" or "inbox[2]"; empty for the document itself
    std::string problem;

    /// The same mismatch seen from the object or the list around it.
    [[nodiscard]] JsonMismatch inside(std::string_view key) &&;
    [[nodiscard]] JsonMismatch inside(std::size_t index) &&;
};

using JsonRead = std::expected<void, JsonMismatch>;

/// "expected (what), found (the kind of the value)".
[[nodiscard]] std::unexpected<JsonMismatch> mismatch(std::string_view expected, const Json& found);

// Each overload reads one type strictly. After a failure the member's value is unspecified.
[[nodiscard]] JsonRead readJson(const Json& json, bool& member);
[[nodiscard]] JsonRead readJson(const Json& json, std::int64_t& member);
[[nodiscard]] JsonRead readJson(const Json& json, std::string& member);
[[nodiscard]] JsonRead readJson(const Json& json, Section& member);
[[nodiscard]] JsonRead readJson(const Json& json, RevealStyle& member);
[[nodiscard]] JsonRead readJson(const Json& json, Date& member);
[[nodiscard]] JsonRead readJson(const Json& json, Json& member);

[[nodiscard]] Json writeJson(bool member);
[[nodiscard]] Json writeJson(std::int64_t member);
[[nodiscard]] Json writeJson(const std::string& member);
[[nodiscard]] Json writeJson(Section member);
[[nodiscard]] Json writeJson(RevealStyle member);
[[nodiscard]] Json writeJson(Date member);
[[nodiscard]] Json writeJson(const Json& member);

template <class T>
[[nodiscard]] Json writeJson(const std::optional<T>& member);
template <class T>
[[nodiscard]] Json writeJson(const std::vector<T>& member);
template <class T>
[[nodiscard]] Json writeJson(const std::set<T>& member);
template <class T>
[[nodiscard]] Json writeJson(const std::map<std::string, T>& member);
template <DescribedRecord Record>
[[nodiscard]] Json writeJson(const Record& record);

template <class T>
[[nodiscard]] JsonRead readJson(const Json& json, std::optional<T>& member) {
    if (json.isNull()) {
        member.reset();
        return {};
    }
    return readJson(json, member.emplace());
}

/// Reads a list and hands each element, in order, to `keep`.
template <class Element, class Keep>
[[nodiscard]] JsonRead readElements(const Json& json, Keep keep) {
    const auto* array = std::get_if<Json::Array>(&json.value);
    if (array == nullptr) {
        return mismatch("a list", json);
    }
    for (std::size_t index = 0; index < array->size(); ++index) {
        Element element{};
        if (JsonRead read = readJson((*array)[index], element); !read) {
            return std::unexpected(std::move(read.error()).inside(index));
        }
        keep(std::move(element));
    }
    return {};
}

template <class T>
[[nodiscard]] JsonRead readJson(const Json& json, std::vector<T>& member) {
    member.clear();
    return readElements<T>(json, [&](T&& element) { member.push_back(std::move(element)); });
}

template <class T>
[[nodiscard]] JsonRead readJson(const Json& json, std::set<T>& member) {
    member.clear();
    return readElements<T>(json, [&](T&& element) { member.insert(std::move(element)); });
}

template <class T>
[[nodiscard]] JsonRead readJson(const Json& json, std::map<std::string, T>& member) {
    const auto* object = std::get_if<Json::Object>(&json.value);
    if (object == nullptr) {
        return mismatch("an object", json);
    }
    member.clear();
    for (const auto& [key, value] : *object) {
        const auto entry = member.emplace_hint(member.end(), key, T{});
        if (JsonRead read = readJson(value, entry->second); !read) {
            return std::unexpected(std::move(read.error()).inside(key));
        }
    }
    return {};
}

template <class Record, class Member>
[[nodiscard]] JsonRead readField(const Json::Object& object, const JsonField<Record, Member>& field,
                                 Record& record) {
    constexpr bool isOptional = requires(Member& member) { member.reset(); };
    constexpr bool keepsValue = JsonRecord<Record>::missingKeys == MissingKeys::keepValue;
    const auto found = object.find(field.key);
    const bool isMissing = found == object.end();
    if constexpr (keepsValue) {
        if (isMissing || found->second.isNull()) {
            return {};
        }
    } else if constexpr (isOptional) {
        if (isMissing) {
            (record.*field.member).reset();
            return {};
        }
    } else if (isMissing) {
        return std::unexpected(JsonMismatch{.path = std::string{field.key}, .problem = "missing"});
    }
    if (JsonRead read = readJson(found->second, record.*field.member); !read) {
        return std::unexpected(std::move(read.error()).inside(field.key));
    }
    return {};
}

template <DescribedRecord Record>
[[nodiscard]] JsonRead readJson(const Json& json, Record& record) {
    const auto* object = std::get_if<Json::Object>(&json.value);
    if (object == nullptr) {
        return mismatch("an object", json);
    }
    JsonRead result;
    std::apply(
        [&](const auto&... fields) {
            static_cast<void>(((result = readField(*object, fields, record)).has_value() && ...));
        },
        JsonRecord<Record>::fields);
    if constexpr (requires { JsonRecord<Record>::normalise(record); }) {
        if (result) {
            JsonRecord<Record>::normalise(record);
        }
    }
    return result;
}

template <class T>
Json writeJson(const std::optional<T>& member) {
    return member ? writeJson(*member) : Json{};
}

template <class Elements>
[[nodiscard]] Json writeElements(const Elements& elements) {
    Json::Array array;
    array.reserve(elements.size());
    for (const auto& element : elements) {
        array.push_back(writeJson(element));
    }
    return {std::move(array)};
}

template <class T>
Json writeJson(const std::vector<T>& member) {
    return writeElements(member);
}

template <class T>
Json writeJson(const std::set<T>& member) {
    return writeElements(member);
}

template <class T>
Json writeJson(const std::map<std::string, T>& member) {
    Json::Object object;
    for (const auto& [key, value] : member) {
        object.emplace_hint(object.end(), key, writeJson(value));
    }
    return {std::move(object)};
}

template <DescribedRecord Record>
Json writeJson(const Record& record) {
    Json::Object object;
    const Record fresh{};
    const auto write = [&](const auto& field) {
        const auto& member = record.*field.member;
        if (field.isAddition && member == fresh.*field.member) {
            return;
        }
        if (Json value = writeJson(member); !value.isNull()) {
            object.emplace(field.key, std::move(value));
        }
    };
    std::apply([&](const auto&... fields) { (write(fields), ...); }, JsonRecord<Record>::fields);
    return {std::move(object)};
}

/// Takes the additions out of an object that are not what they have to be, so that a record can be read from
/// the rest: what only newer builds know makes no file unreadable. Puts them into `removed`, and returns what
/// was wrong with each.
template <DescribedRecord Record>
[[nodiscard]] std::vector<JsonMismatch> removeWrongAdditions(Json::Object& object, Json::Object& removed) {
    std::vector<JsonMismatch> wrong;
    Record scratch{};
    const auto look = [&](const auto& field) {
        if (!field.isAddition) {
            return;
        }
        if (JsonRead read = readField(object, field, scratch); !read) {
            wrong.push_back(std::move(read.error()));
            removed.insert(object.extract(object.find(field.key)));
        }
    };
    std::apply([&](const auto&... fields) { (look(fields), ...); }, JsonRecord<Record>::fields);
    return wrong;
}

/// The mismatch in words: "reveal.hover: expected true or false, found a number".
[[nodiscard]] DecodingError describe(JsonMismatch mismatch);

/// Reads a record from a parsed document; `record` brings the values of the keys that may be missing.
template <DescribedRecord Record>
[[nodiscard]] std::expected<Record, DecodingError> decodeRecord(const Json& json, Record record = {}) {
    if (JsonRead read = readJson(json, record); !read) {
        return std::unexpected(describe(std::move(read.error())));
    }
    return record;
}

/// Writes a record as a text with sorted keys.
template <DescribedRecord Record>
[[nodiscard]] std::string encodeRecord(const Record& record) {
    return writeJson(record).print();
}

}  // namespace velko
