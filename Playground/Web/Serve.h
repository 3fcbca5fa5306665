#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace velko::web {

struct ServeOptions {
    std::filesystem::path home;           ///< the folder that is kept between runs
    std::optional<std::uint16_t> port{};  ///< left out: any that is free
    bool mayOpen = true;                  ///< whether to open the page where there is a desktop
};

/// Plays on a page until the program is interrupted. The process's exit status.
[[nodiscard]] int serve(const ServeOptions& options);

}  // namespace velko::web
