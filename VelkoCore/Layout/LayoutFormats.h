#pragma once

#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "VelkoCore/Files/Json.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/Section.h"

namespace velko {

/// Reads a layout from JSON. Missing keys take the defaults of older files; a value of the wrong type
/// fails, and the error names its key. A wrong value of what older builds did not have fails nothing: it
/// counts as missing and stays in the file, and `ignored`, if given, gets its error.
[[nodiscard]] std::expected<Layout, DecodingError> decodeLayout(
    std::string_view json, std::vector<DecodingError>* ignored = nullptr);

/// Writes a layout as JSON: indented, keys sorted, dates as ISO 8601, ending in a line feed.
[[nodiscard]] std::string encodeLayout(const Layout& layout);

/// Whether a layout file or an export file may have that key.
[[nodiscard]] bool isLayoutKey(std::string_view key);

/// Why a file is not a layout that this Velko can import.
enum class ImportError { notVelko, newerFormat };

/// A file is refused, or it is a layout with a fault inside.
using LayoutReadError = std::variant<ImportError, DecodingError>;

/// The error in words for people.
[[nodiscard]] std::string describe(const LayoutReadError& error);

/// The part of a layout that moves to another Mac: placements and preferences, no click history.
struct LayoutExport {
    static constexpr std::int64_t currentFormat = 1;
    static constexpr std::string_view fileExtension = "velko";

    std::int64_t velkoLayout = currentFormat;
    std::map<BundleID, Section> sections;
    BundleIDs alwaysKeep;
    RevealSettings reveal;
    Section newIconDefault = Section::bar;
    bool askAboutNewIcons = true;
    bool popOutOnChange = true;
    std::optional<bool> showLiveActivities{};         ///< absent in files of builds that did not have it
    std::optional<bool> leaveNewIconsOut{};           ///< absent while it is off
    std::optional<BundleIDs> neverPopOut{};           ///< absent while there are none
    std::optional<bool> shelfWhenFull{};              ///< absent while it is on
    std::optional<std::int64_t> showAllFromWidth{};   ///< absent while it is off
    std::optional<bool> offersPresenting{};           ///< absent while it is off
    std::optional<BundleIDs> shareKeep{};             ///< absent while there are none
    std::optional<std::int64_t> presentingMinutes{};  ///< absent while the user ends it

    bool operator==(const LayoutExport&) const = default;

    [[nodiscard]] static LayoutExport of(const Layout& layout);

    /// The content of an export file: indented JSON with sorted keys.
    [[nodiscard]] std::string data() const;

    /// Reads an export file. The format is checked first: only a file of this format or an older one is read
    /// in full. Then every key of the first Velko must be there.
    [[nodiscard]] static std::expected<LayoutExport, LayoutReadError> read(std::string_view data);
};

}  // namespace velko
