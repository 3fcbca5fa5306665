#include "VelkoCore/Layout/LayoutStore.h"

#include <utility>

#include "VelkoCore/Layout/LayoutFormats.h"

namespace velko {

LayoutStore::LayoutStore(std::filesystem::path url, FileCalls calls)
    : url_(std::move(url)), calls_(std::move(calls)) {}

std::filesystem::path LayoutStore::defaultURL(const std::filesystem::path& applicationSupport) {
    return applicationSupport / "Velko" / "layout.json";
}

const std::filesystem::path& LayoutStore::url() const noexcept {
    return url_;
}

std::expected<std::optional<Layout>, StoreError> LayoutStore::load(
    std::vector<DecodingError>* ignored) const {
    const auto content = AtomicFile::readOwn(url_, calls_);
    if (!content) {
        return std::unexpected(StoreError{content.error().description});
    }
    const std::optional<std::string>& text = *content;
    if (!text) {
        return std::nullopt;
    }
    auto layout = decodeLayout(*text, ignored);
    if (!layout) {
        return std::unexpected(StoreError{url_.string() + ": " + layout.error().description});
    }
    return std::move(*layout);
}

std::expected<void, StoreError> LayoutStore::save(const Layout& layout) const {
    if (const auto replaced = AtomicFile::replace(url_, encodeLayout(layout), calls_); !replaced) {
        return std::unexpected(StoreError{replaced.error().description});
    }
    return {};
}

LayoutHistory LayoutStore::history() const {
    return {url_, calls_};
}

FolderLock LayoutStore::folderLock() const {
    return FolderLock{url_.has_parent_path() ? url_.parent_path() : std::filesystem::path{"."}, calls_};
}

}  // namespace velko
