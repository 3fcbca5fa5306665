#include "VelkoCore/Layout/ManagedLayoutFile.h"

#include <utility>

namespace velko {

std::filesystem::path ManagedLayoutFile::defaultURL(const std::filesystem::path& applicationSupport) {
    return applicationSupport / "Velko" / "layout.json";
}

std::expected<std::optional<ManagedLayout::Found>, std::string> ManagedLayoutFile::read() const {
    if (file.empty()) {
        return std::nullopt;
    }
    const auto content = AtomicFile::readOf(owner, file, largest, calls);
    if (!content) {
        return std::unexpected(content.error().description);
    }
    const auto& text = *content;
    if (!text) {
        return std::nullopt;
    }
    auto found = ManagedLayout::read(*text);
    if (!found) {
        return std::unexpected(file.string() + ": " + found.error());
    }
    return *std::move(found);
}

}  // namespace velko
