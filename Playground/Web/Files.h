#pragma once

#include <string>
#include <string_view>

namespace velko::web {

inline constexpr std::string_view eventsPath = "/events";

/// A file of the page. It is part of the program.
struct File {
    std::string_view path;
    std::string_view type;
    std::string_view content;
};

/// The file at a path; null where there is none. The page itself is "/".
[[nodiscard]] const File* fileAt(std::string_view path);

/// The page with this run's token and the pictures of the symbols in it.
[[nodiscard]] std::string pageWith(std::string_view token);

}  // namespace velko::web
