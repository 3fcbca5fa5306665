#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <map>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// A value of a property list, the format of other programs' preference files.
struct PropertyList {
    using Array = std::vector<PropertyList>;
    using Dictionary = std::map<std::string, PropertyList>;
    using Data = std::vector<std::byte>;

    /// A kind of value that Velko has no use for.
    struct Other {
        bool operator==(const Other&) const = default;
    };

    std::variant<Other, bool, std::int64_t, double, std::string, Data, Date, Array, Dictionary> value;

    /// The value if it is a `Kind`, or null.
    template <class Kind>
    [[nodiscard]] const Kind* as() const noexcept {
        return std::get_if<Kind>(&value);
    }

    bool operator==(const PropertyList&) const = default;
};

/// Why a property list is not read.
enum class PropertyListError {
    unreadable,    ///< no such file, or the file cannot be read
    malformed,     ///< not a property list, or not one that Velko trusts
    tooLarge,      ///< more bytes than `PropertyListLimits` allow, as stored or as values
    tooDeep,       ///< nested deeper than they allow
    tooManyNodes,  ///< more values than they allow
};

/// How much of an outside file Velko takes in.
namespace PropertyListLimits {

inline constexpr std::size_t bytes = std::size_t{4} << 20U;
/// Values within values, the outermost counted.
inline constexpr std::size_t depth = 32;
/// Values and keys, each counted as often as it is reached.
inline constexpr std::size_t nodes = 100'000;
/// Bytes of text and data, each counted as often as it is reached.
inline constexpr std::size_t payload = 4 * bytes;

}  // namespace PropertyListLimits

/// The platform's way of reading property lists, binary and XML.
class PropertyListReader : private NonCopyable {
 public:
    virtual ~PropertyListReader() = default;

    /// The value that `bytes` hold. Is only handed bytes that passed the checks of `readPropertyList`. Throws
    /// nothing and keeps nothing.
    [[nodiscard]] virtual std::expected<PropertyList, PropertyListError> read(
        std::span<const std::byte> bytes) const = 0;
};

/// Reads a property list with the platform's reader, which sees the bytes only if they are within
/// `PropertyListLimits` and well formed enough to be harmless.
[[nodiscard]] std::expected<PropertyList, PropertyListError> readPropertyList(
    std::span<const std::byte> bytes, const PropertyListReader& reader);

/// The same for a regular file.
[[nodiscard]] std::expected<PropertyList, PropertyListError> readPropertyList(
    const std::filesystem::path& path, const PropertyListReader& reader);

}  // namespace velko
