#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Search/FoldedText.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// How well what the user types fits a name. The better one comes first.
enum class NameMatch {
    wordStarts,   ///< each typed word begins a word of the name, in order: "dri" and "goo dri" for "Google
                  ///< Drive"
    initials,     ///< the letters are initials of words, in order: "gd" for "Google Drive"
    subsequence,  ///< the letters are in the name, in order: "gldv" for "Google Drive"
};

/// Finds apps by what the user types, without case and accents. It folds the names once, so that each
/// keystroke only compares. Pure value.
class AppSearch final {
 public:
    struct App {
        BundleID bundleID;
        std::string name;
        std::optional<Date> lastClicked{};

        bool operator==(const App&) const = default;
    };

    AppSearch() = default;
    explicit AppSearch(std::vector<App> apps);

    /// The apps that match, the best first. Those that match equally well are ordered by their last click,
    /// the newest first, and then by their names, as `NameOrder` has it. If nothing is typed but spaces and
    /// signs, every app matches.
    [[nodiscard]] std::vector<App> find(std::string_view typed) const;

    /// How well that fits a name; nothing if it does not. What has no letter or digit fits every name as well
    /// as anything can.
    [[nodiscard]] static std::optional<NameMatch> match(std::string_view typed, std::string_view name);

 private:
    struct Entry {
        App app;
        FoldedText name;
    };

    std::vector<Entry> entries_;  ///< in the order of equal matches
};

}  // namespace velko
