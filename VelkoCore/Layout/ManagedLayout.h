#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

enum class Switch;

/// What an organisation has decided for all users of a Mac: places of apps, and preferences. It is laid over
/// the user's own layout where that is used, and taken off again where it is saved. Pure value.
struct ManagedLayout {
    std::map<BundleID, Section> sections;
    std::optional<Section> newIconDefault;
    std::optional<std::int64_t> autoTuckSeconds;  ///< 0 (never) or 3 to 30
    std::optional<RevealStyle> notchedStyle;
    std::optional<RevealStyle> otherStyle;
    std::map<Switch, bool> switches;
    BundleIDs alwaysKeep;   ///< beside those of the user
    BundleIDs neverPopOut;  ///< beside those of the user

    bool operator==(const ManagedLayout&) const = default;

    /// Whether nothing is managed.
    [[nodiscard]] bool isEmpty() const { return *this == ManagedLayout(); }

    [[nodiscard]] bool places(const BundleID& bundleID) const { return sections.contains(bundleID); }
    [[nodiscard]] bool sets(Switch which) const { return switches.contains(which); }
    /// Whether the app stays out of suggestions: it is named, or it has its place from the organisation.
    [[nodiscard]] bool keeps(const BundleID& bundleID) const {
        return alwaysKeep.contains(bundleID) || places(bundleID);
    }

    /// The number of preferences that are managed.
    [[nodiscard]] std::size_t countOfPreferences() const;

    /// The layout that holds: the user's own with everything managed in place of theirs.
    [[nodiscard]] Layout over(Layout own) const;
    [[nodiscard]] RevealSettings over(RevealSettings own) const;

    /// The opposite: the user's own layout after an edit of the one that holds. What is managed stays as it
    /// was in `own`, whatever the edit did to it.
    [[nodiscard]] Layout ownPart(Layout edited, const Layout& own) const;

    /// What a file says. An entry that makes no sense is left out and told of.
    struct Found;

    /// Reads a file's text: an object with any of the keys of a layout or of an exported layout. What else
    /// those files keep, as clicks, is passed over. The error says why the text as a whole is no such file.
    [[nodiscard]] static std::expected<Found, std::string> read(std::string_view json);
};

struct ManagedLayout::Found {
    ManagedLayout layout{};
    std::vector<std::string> faults{};  ///< each in words that name the entry; at most `mostFaults`

    static constexpr std::size_t mostFaults = 20;

    bool operator==(const Found&) const = default;
};

}  // namespace velko
