#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Sorting/SortSession.h"

namespace velko::playground {

/// Reads the layout in a file. If there is no file and `mayCreate` is true, the result is the first layout,
/// which is also written to the file unless another program has the folder. On failure nothing, and standard
/// error says why.
[[nodiscard]] std::optional<Layout> loadLayoutFile(const std::filesystem::path& layoutFile, bool mayCreate);

/// Writes the layout to its file. Returns whether that worked; if not, standard error says why.
[[nodiscard]] bool saveLayoutFile(const std::filesystem::path& layoutFile, const Layout& layout);

/// Writes the layout to `file`, for another Mac. Like the next functions, it returns the exit status of the
/// process.
[[nodiscard]] int exportLayoutFile(const Layout& layout, const std::filesystem::path& file);

/// Merges an exported file into the layout and saves the layout. If the file is refused, nothing changes.
[[nodiscard]] int importIntoLayoutFile(Layout layout, const std::filesystem::path& layoutFile,
                                       const std::filesystem::path& file);

/// Looks below a home folder for the settings of another organiser, and prints what Velko can take over.
[[nodiscard]] int tellWhatOthersHave(const Layout& layout, const std::filesystem::path& home);

/// Shows the cards of a session one by one on `screen`, and reads one key for each from `keys`. Returns
/// whether the user finished: false if they quit, or if `keys` ended.
[[nodiscard]] bool walkCards(SortSession& session, std::istream& keys, std::ostream& screen);

/// Sorts the playground's apps in the terminal, and saves what the user chose.
[[nodiscard]] int sortLayoutFile(Layout layout, const std::filesystem::path& layoutFile);

}  // namespace velko::playground
