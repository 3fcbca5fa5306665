#include "Playground/Terminal/ScratchFolder.h"

#include <cstdlib>
#include <string>
#include <system_error>
#include <utility>

namespace velko::playground {

std::optional<ScratchFolder> ScratchFolder::create() {
    std::error_code error;
    const auto parent = std::filesystem::temp_directory_path(error);
    std::string pattern = (parent / "velko-playground-XXXXXX").string();
    if (error || ::mkdtemp(pattern.data()) == nullptr) {
        return std::nullopt;
    }
    return ScratchFolder(pattern);
}

ScratchFolder::ScratchFolder(ScratchFolder&& other) noexcept : path_(std::exchange(other.path_, {})) {}

ScratchFolder::~ScratchFolder() {
    if (!path_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
}

}  // namespace velko::playground
