#include "Velko/Flows/LayoutSaving.h"

#include <expected>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "Velko/App/Log.h"
#include "VelkoCore/Time/Date.h"
#include "VelkoCore/Time/Timing.h"

namespace velko {

namespace {

/// Gives a file a second name, so that replacing the first leaves its contents. A link also works where
/// the contents may not be read; file systems without links get a copy. Whether there was a file to keep.
std::expected<bool, std::error_code> keepAs(const std::filesystem::path& file,
                                            const std::filesystem::path& aside) {
    std::error_code error;
    if (std::filesystem::equivalent(file, aside, error)) {
        return true;
    }
    const std::filesystem::path target = std::filesystem::canonical(file, error);
    if (error == std::errc::no_such_file_or_directory) {
        return false;
    }
    std::filesystem::create_hard_link(target, aside, error);
    if (error) {
        std::filesystem::copy_file(target, aside, error);
    }
    if (error) {
        return std::unexpected(error);
    }
    using std::filesystem::perms;
    std::filesystem::permissions(aside, perms::owner_read | perms::owner_write, error);
    return true;  // also where the file is somebody else's, who alone may change its permissions
}

}  // namespace

LayoutSaving::LayoutSaving(FlowHost& host, MainThread& mainThread, Log& log, const LayoutStore& store)
    : host_(host), mainThread_(mainThread), log_(log), store_(store) {}

LayoutSaving::Loaded LayoutSaving::load() {
    pending_.cancel();
    host_.set(&AppValues::saveFailure, std::nullopt);  // what was not saved is given up
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
    const std::optional<std::string> failure = write();
    if (failure) {
        log_.log("layout", "save failed: " + *failure);
    } else {
        pending_.cancel();
    }
    host_.set(&AppValues::saveFailure, failure);
    return !failure;
}

void LayoutSaving::finish() {
    if (pending_.isPending() || host_.values().saveFailure) {
        saveNow();
    }
}

std::optional<std::string> LayoutSaving::write() {
    if (fileUnreadable_) {
        if (auto failure = putUnreadableFileAside()) {
            return failure;
        }
    }
    fileUnreadable_ = false;
    if (const auto saved = store_.save(host_.values().layout); !saved) {
        return saved.error().description;
    }
    return std::nullopt;
}

std::optional<std::string> LayoutSaving::putUnreadableFileAside() {
    std::string date = formatDate(floorToSeconds(mainThread_.date()));
    std::erase(date, ':');
    const std::filesystem::path& url = store_.url();
    const std::filesystem::path aside = url.parent_path() / ("layout.unreadable-" + date + ".json");
    const auto kept = keepAs(url, aside);
    if (!kept) {
        return "the unreadable file could not be kept: " + kept.error().message();
    }
    if (*kept) {
        log_.log("layout", "unreadable file kept as " + aside.string());
    }
    return std::nullopt;
}

}  // namespace velko
