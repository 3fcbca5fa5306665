#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Import/PropertyList.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

/// What another menu-bar organiser's preferences say, in Velko's terms.
struct ImportedLayout {
    std::string source;                           ///< the organiser's name, for people
    std::map<BundleID, Section> sections;         ///< empty where the organiser keeps none that can be read
    std::optional<std::int64_t> autoTuckSeconds;  ///< 0 (never) or 3 to 30; absent if it does not say
    std::optional<bool> hover;                    ///< absent if it does not say
    BundleID organiser = {};  ///< the organiser's identifier; empty if nobody looked for it

    bool operator==(const ImportedLayout&) const = default;
};

/// Takes over the settings of the organisers that Velko knows. Nothing here fails: what is missing,
/// unreadable or of another shape counts as not there.
namespace Importers {

inline constexpr std::array<std::string_view, 2> bartenderDomains{"com.surteesstudios.Bartender",
                                                                  "com.surteesstudios.Bartender-setapp"};
inline constexpr std::string_view iceDomain = "com.jordanbaird.Ice";
inline constexpr std::string_view vanillaDomain = "net.matthewpalmer.Vanilla";

struct Request {
    const BundleIDs& knownBundleIDs;         ///< apps known to be in the menu bar now
    const std::filesystem::path& directory;  ///< the user's home folder
    const PropertyListReader& reader;
};

/// The first of the organisers in the table of importers whose preferences yield something.
[[nodiscard]] std::optional<ImportedLayout> detect(const Request& request);

/// Placements by Bartender. An app in several lists keeps the most hidden section.
[[nodiscard]] std::optional<ImportedLayout> bartender(const PropertyList::Dictionary& preferences,
                                                      const BundleIDs& knownBundleIDs);

/// Timing and hover by Ice.
[[nodiscard]] std::optional<ImportedLayout> ice(const PropertyList::Dictionary& preferences);

/// Timing by Vanilla; preferences without any are a result too.
[[nodiscard]] std::optional<ImportedLayout> vanilla(const PropertyList::Dictionary& preferences);

}  // namespace Importers

}  // namespace velko
