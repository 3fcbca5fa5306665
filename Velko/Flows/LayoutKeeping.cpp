#include "Velko/Flows/LayoutKeeping.h"

#include <algorithm>
#include <chrono>
#include <expected>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

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

LayoutKeeping::LayoutKeeping(FlowHost& host, MainThread& mainThread, Log& log, const LayoutStore& store,
                             std::function<void(bool)> loaded)
    : host_(host),
      mainThread_(mainThread),
      log_(log),
      store_(store),
      loaded_(std::move(loaded)),
      history_(store.history()) {}

void LayoutKeeping::load() {
    requireMainThread(mainThread_);
    pending_.cancel();
    host_.set(&AppValues::saveFailure, std::nullopt);  // what was not saved is given up
    auto found = read();
    const bool isMended = found && host_.values().problems.layoutUnreadable;
    host_.setHealth(&HealthFacts::layoutUnreadable, found ? std::nullopt : std::optional(found.error()));
    own_ = found ? *std::move(found) : Layout();
    layManagedOver();
    loaded_(isMended);
}

std::expected<Layout, std::string> LayoutKeeping::read() {
    std::expected<Layout, std::string> result;
    std::vector<DecodingError> ignored;
    auto loaded = store_.load(&ignored);
    fileUnreadable_ = !loaded;
    isBrokenFileKept_ = false;
    if (!loaded) {
        result = std::unexpected(loaded.error().description);
    } else if (auto& found = *loaded) {
        result = *std::move(found);
        log_.log("layout", "loaded " + std::to_string(result->sections.size()) + " placements from " +
                               store_.url().string());
        for (const DecodingError& error : ignored) {
            log_.log("layout", "ignored: " + error.description);
        }
    } else if (const auto saved = store_.save(*result)) {
        log_.log("layout", "no layout yet: created " + store_.url().string());
    } else {
        result = std::unexpected(saved.error().description);
    }
    if (!result) {
        log_.log("layout", "UNREADABLE, showing everything: " + result.error());
    }
    return result;
}

bool LayoutKeeping::edit(Saving saving, const FlowHost::Edit& change, HistoryCause cause) {
    requireMainThread(mainThread_);
    Layout edited = host_.values().layout;
    change(edited);
    Layout own = host_.values().managed.ownPart(std::move(edited), own_);
    const bool changed = own != own_;
    if (saving == Saving::now) {
        keepEarlier(cause, changed);
    }
    own_ = std::move(own);
    layManagedOver();
    if (saving == Saving::now) {
        return saveNow();
    }
    if (!changed || host_.values().problems.layoutUnreadable) {
        return false;
    }
    if (saving == Saving::nowUnlessBroken) {
        return saveNow();
    }
    schedule();
    return false;
}

void LayoutKeeping::layManagedOver() {
    host_.set(&AppValues::layout, host_.values().managed.over(own_));
}

void LayoutKeeping::keepEarlier(HistoryCause cause, bool isChanged) {
    const auto kept = keepFor(cause, isChanged);
    if (!kept) {
        const std::string& failure = kept.error().description;
        if (failure != host_.values().historyFailure) {
            log_.log("layout", "no earlier layout kept: " + failure);
        }
        if (!fileUnreadable_) {  // that file is put aside in any case
            host_.set(&AppValues::historyFailure, failure);
        }
    } else if (const auto& entry = *kept) {
        log_.log("layout", "earlier layout kept as " + (history_.folder() / entry->file()).string());
        host_.set(&AppValues::historyFailure, std::nullopt);
        host_.set(&AppValues::historyRevision, host_.values().historyRevision + 1);
    }
}

/// A file that could not be read is kept itself, once: nobody has decided what is in memory then.
std::expected<std::optional<HistoryEntry>, FileError> LayoutKeeping::keepFor(HistoryCause cause,
                                                                             bool isChanged) {
    const Date now = floorToSeconds(mainThread_.date());
    if (fileUnreadable_) {
        if (std::exchange(isBrokenFileKept_, true)) {
            return std::nullopt;
        }
        return history_.keepFile(store_.url(),
                                 cause == HistoryCause::change ? HistoryCause::freshStart : cause, now);
    }
    if (!isChanged || host_.values().problems.layoutUnreadable) {
        return std::nullopt;
    }
    const auto today = std::chrono::floor<std::chrono::days>(Calendar().localTime(now));
    if (cause == HistoryCause::change) {
        const auto isKept = isKeptOn(today);
        if (!isKept) {
            return std::unexpected(isKept.error());
        }
        if (*isKept) {
            keptDay_ = today;
            return std::nullopt;
        }
    }
    const auto kept = history_.keep(own_, cause, now);
    if (!kept) {
        return std::unexpected(kept.error());
    }
    keptDay_ = today;
    return *kept;
}

std::expected<bool, FileError> LayoutKeeping::isKeptOn(std::chrono::local_days day) const {
    if (keptDay_ == day) {
        return true;
    }
    const auto entries = history_.entries();
    if (!entries) {
        return std::unexpected(entries.error());
    }
    return std::ranges::any_of(*entries, [&](const HistoryEntry& entry) {
        return std::chrono::floor<std::chrono::days>(entry.when) == day;
    });
}

void LayoutKeeping::schedule() {
    pending_ = mainThread_.after(Timing::saveDelay, [this] { save(); });
}

bool LayoutKeeping::saveNow() {
    const bool isSaved = save();
    if (isSaved && host_.values().problems.layoutUnreadable) {
        load();  // from now on the file can be read
    }
    return isSaved;
}

bool LayoutKeeping::save() {
    const std::optional<std::string> failure = write();
    if (failure) {
        log_.log("layout", "save failed: " + *failure);
    } else {
        pending_.cancel();
    }
    host_.set(&AppValues::saveFailure, failure);
    return !failure;
}

void LayoutKeeping::finish() {
    if (pending_.isPending() || host_.values().saveFailure) {
        save();
    }
}

std::optional<std::string> LayoutKeeping::write() {
    if (fileUnreadable_) {
        if (auto failure = putUnreadableFileAside()) {
            return failure;
        }
    }
    fileUnreadable_ = false;
    if (const auto saved = store_.save(own_); !saved) {
        return saved.error().description;
    }
    return std::nullopt;
}

std::optional<std::string> LayoutKeeping::putUnreadableFileAside() {
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
