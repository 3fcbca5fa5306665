#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>

#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/ManagedLayout.h"

namespace velko {

/// The file in which an organisation manages layouts. Velko only reads it. Any thread; blocks until it is
/// read.
struct ManagedLayoutFile {
    static constexpr std::size_t largest = 1U << 20U;  ///< bytes

    std::filesystem::path file{};  ///< empty: nothing is managed here
    unsigned owner = 0;            ///< the user whom it must belong to: the system's administrator
    FileCalls calls{};

    /// Where the file belongs, inside the Application Support folder of the whole Mac.
    [[nodiscard]] static std::filesystem::path defaultURL(const std::filesystem::path& applicationSupport);

    /// What the file says; nothing when there is none. A file that others could have written is an error, as
    /// is one that can't be read.
    [[nodiscard]] std::expected<std::optional<ManagedLayout::Found>, std::string> read() const;
};

}  // namespace velko
