#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>

#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Sorting/SortSession.h"

namespace velko::playground {

/// The layout in a file; where there is no file and `mayCreate`, the first layout, which is written to it
/// unless another program has the folder. On a problem, says so on standard error and gives nothing.
[[nodiscard]] std::optional<Layout> loadLayoutFile(const std::filesystem::path& layoutFile, bool mayCreate);

/// Writes the layout to its file; whether that worked. A failure is told on standard error.
[[nodiscard]] bool saveLayoutFile(const std::filesystem::path& layoutFile, const Layout& layout);

/// Writes the layout to `file` for another Mac. The process's exit status, as of all that follow.
[[nodiscard]] int exportLayoutFile(const Layout& layout, const std::filesystem::path& file);

/// Merges an exported file into the layout and saves it. A file that is refused changes nothing.
[[nodiscard]] int importIntoLayoutFile(Layout layout, const std::filesystem::path& layoutFile,
                                       const std::filesystem::path& file);

/// Tells what of another organiser's settings below a home folder could be taken over.
[[nodiscard]] int tellWhatOthersHave(const Layout& layout, const std::filesystem::path& home);

/// Walks a session's cards, one key at a time from `keys`, and shows them on `screen`. Whether the user
/// went through with it: false when they left, or the keys came to an end.
[[nodiscard]] bool walkCards(SortSession& session, std::istream& keys, std::ostream& screen);

/// Sorts the playground's apps in the terminal and saves what was chosen. The process's exit status.
[[nodiscard]] int sortLayoutFile(Layout layout, const std::filesystem::path& layoutFile);

}  // namespace velko::playground
