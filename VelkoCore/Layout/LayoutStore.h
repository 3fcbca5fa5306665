#pragma once

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Files/FolderLock.h"
#include "VelkoCore/Layout/Layout.h"
#include "VelkoCore/Layout/LayoutHistory.h"

namespace velko {

/// Why the layout file could not be read or written, in words for the log and for people.
struct StoreError {
    std::string description;

    bool operator==(const StoreError&) const = default;
};

/// Reads and writes the one layout file. Keeps nothing but the file's location, takes no lock.
class LayoutStore {
 public:
    explicit LayoutStore(std::filesystem::path url, FileCalls calls = {});

    /// Where the file belongs, inside the user's Application Support folder.
    [[nodiscard]] static std::filesystem::path defaultURL(const std::filesystem::path& applicationSupport);

    [[nodiscard]] const std::filesystem::path& url() const noexcept;

    /// The layout in the file; nothing when there is no file; an error when it cannot be read. `ignored` as
    /// in `decodeLayout`.
    [[nodiscard]] std::expected<std::optional<Layout>, StoreError> load(
        std::vector<DecodingError>* ignored = nullptr) const;

    /// Replaces the file as a whole, making its folder where needed. An error leaves the old file,
    /// unless only the last step failed, the flush of the folder.
    [[nodiscard]] std::expected<void, StoreError> save(const Layout& layout) const;

    /// The folder beside the file with the layouts of earlier days.
    [[nodiscard]] LayoutHistory history() const;

    /// The lock of the file's folder, not taken yet, for a program that works on the file for some time.
    [[nodiscard]] FolderLock folderLock() const;

 private:
    std::filesystem::path url_;
    FileCalls calls_;
};

}  // namespace velko
