#include "Velko/Flows/LayoutSaving.h"

#include <expected>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "Velko/Log.h"
#include "VelkoCore/Date.h"
#include "VelkoCore/Timing.h"

namespace velko {

namespace {

/// Gives a file a second name, so that replacing the first leaves its contents. A link also works where
/// the contents may not be read; file systems without links get a copy.
std::error_code keepAs(const std::filesystem::path& file, const std::filesystem::path& aside) {
    std::error_code error;
    if (std::filesystem::equivalent(file, aside, error)) {
        return {};
    }
    const std::filesystem::path target = std::filesystem::canonical(file, error);
    if (error == std::errc::no_such_file_or_directory) {
        return {};  // somebody removed the file: nothing is left to keep
    }
    std::filesystem::create_hard_link(target, aside, error);
    if (error) {
        std::filesystem::copy_file(target, aside, error);
    }
    if (!error) {
        using std::filesystem::perms;
        std::filesystem::permissions(aside, perms::owner_read | perms::owner_write, error);
    }
    return error;
}

}  // namespace

LayoutSaving::LayoutSaving(MainThread& mainThread, Log& log, const LayoutStore& store, const Layout& layout)
    : mainThread_(mainThread), log_(log), store_(store), layout_(layout) {}

LayoutSaving::Loaded LayoutSaving::load() {
    pending_.cancel();
    Loaded result;
    auto loaded = store_.load();
    fileUnreadable_ = !loaded;
    if (!loaded) {
        result.failure = loaded.error().description;
    } else if (auto& found = *loaded) {
        result.layout = *std::move(found);
        log_.log("layout", "loaded " + std::to_string(result.layout.sections.size()) + " placements from " +
                               store_.url().string());
    } else if (const auto saved = store_.save(result.layout)) {
        log_.log("layout", "no layout yet: created " + store_.url().string());
    } else {
        result.failure = saved.error().description;
    }
    if (result.failure) {
        log_.log("layout", "UNREADABLE, showing everything: " + *result.failure);
    }
    return result;
}

void LayoutSaving::schedule() {
    pending_ = mainThread_.after(Timing::saveDelay, [this] { saveNow(); });
}

bool LayoutSaving::saveNow() {
    pending_.cancel();
    if (fileUnreadable_ && !putUnreadableFileAside()) {
        return false;
    }
    if (const auto saved = store_.save(layout_); !saved) {
        log_.log("layout", "save failed: " + saved.error().description);
        return false;
    }
    fileUnreadable_ = false;
    return true;
}

void LayoutSaving::finish() {
    if (pending_.isPending()) {
        saveNow();
    }
}

bool LayoutSaving::putUnreadableFileAside() {
    std::string date = formatDate(floorToSeconds(mainThread_.date()));
    std::erase(date, ':');
    const std::filesystem::path& url = store_.url();
    const std::filesystem::path aside = url.parent_path() / ("layout.unreadable-" + date + ".json");
    if (const std::error_code error = keepAs(url, aside)) {
        log_.log("layout", "save failed: the unreadable file could not be kept: " + error.message());
        return false;
    }
    log_.log("layout", "unreadable file kept as " + aside.string());
    return true;
}

}  // namespace velko
