#include "Scenarios/Rules/LayoutFileRules.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>
#include <utility>

#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/App/AppController.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoCore/Time/Timing.h"

namespace velko::scenarios {

namespace {

using script::Verb;

// A nap may delay the save by one beat.
constexpr auto patience = Timing::saveDelay + SimulatedMainThread::napBeat + std::chrono::seconds(1);

std::string contentOf(const std::filesystem::path& file) {
    const auto content = AtomicFile::read(file);
    return content ? content->value_or("") : "";
}

std::optional<Section> placeOf(const BundleID& app, const Layout& layout) {
    const auto place = layout.sections.find(app);
    return place == layout.sections.end() ? std::nullopt : std::optional(place->second);
}

}  // namespace

std::optional<std::string> LayoutFileRules::check(const script::Step& done) {
    if (world_.savingFails || done.verb == Verb::filePlace || done.verb == Verb::fileSpoil) {
        mayDiffer_ = true;
    }
    if (done.verb == Verb::filePlace || done.verb == Verb::fileSpoil) {
        foreign_.insert(contentOf(world_.layoutFile()));
    }
    const auto lost = checkUnreadable(done);
    const auto leaked = checkManaged(done);
    const auto unsaved = lost ? lost : leaked ? leaked : checkSaved();
    return unsaved ? unsaved : checkHistory();
}

std::optional<std::string> LayoutFileRules::checkHistory() {
    const LayoutHistory history = LayoutStore(world_.layoutFile()).history();
    const auto found = history.entries();
    if (!found) {
        return "the history cannot be listed: " + found.error().description;
    }
    if (*found == history_) {
        return std::nullopt;
    }
    const std::vector<HistoryEntry> before = std::exchange(history_, *found);
    if (history_.size() > LayoutHistory::most) {
        return "too many earlier layouts are kept";
    }
    for (const HistoryEntry& entry : history_) {
        if (std::ranges::count(before, entry) == 0 && !canBeRestored(history.folder() / entry.file())) {
            return "an earlier layout cannot be restored: " + entry.file();
        }
    }
    const auto lost = std::ranges::find_if(before, [&](const HistoryEntry& entry) {
        return std::ranges::count(history_, entry) == 0 && (history_.empty() || entry > history_.back());
    });
    return lost == before.end() ? std::nullopt : std::optional("an earlier layout is lost: " + lost->file());
}

bool LayoutFileRules::canBeRestored(const std::filesystem::path& file) const {
    const std::string content = contentOf(file);
    const auto earlier = decodeLayout(content);
    if (!earlier) {
        return foreign_.contains(content);
    }
    const Layout now = world_.velko() == nullptr ? Layout() : world_.velko()->values().layout;
    const Layout result = restored(now, *earlier);
    const auto read = decodeLayout(encodeLayout(result));
    return read && *read == result;
}

/// The places that the user has chosen for managed apps are the same as long as nobody lets go of them.
std::optional<std::string> LayoutFileRules::checkManaged(const script::Step& done) {
    const auto found =
        ManagedLayoutFile{.file = world_.managedFile(), .owner = ::geteuid()}.read().value_or(std::nullopt);
    placed_.push_back(found ? found->layout : ManagedLayout());
    const AppController* const velko = world_.velko();
    if (velko == nullptr) {
        own_.reset();
        return std::nullopt;
    }
    const AppValues& values = velko->values();
    const ManagedLayout& managed = values.managed;
    const bool isReadNow = done.verb == Verb::velkoStart || done.verb == Verb::fileReload;
    const bool mayReload = isReadNow || done.verb == Verb::choose || done.control.starts_with("problem:");
    const bool isKnown = isReadNow ? managed == placed_.back() : std::ranges::count(placed_, managed) > 0;
    if (managed == placed_.back()) {
        placed_ = {managed};
    }
    for (const auto& [app, section] : managed.sections) {
        if (values.layout.section(app) != section || values.layout.isWaiting(app)) {
            return "a managed app is elsewhere: " + app;
        }
        if (!mayReload && own_ && managed_.places(app) &&
            placeOf(app, *own_) != placeOf(app, velko->ownLayout())) {
            return "the user's layout has another place for a managed app: " + app;
        }
    }
    managed_ = managed;
    own_ = velko->ownLayout();
    return isKnown ? std::nullopt : std::optional<std::string>("what is managed is not what was placed");
}

std::optional<std::string> LayoutFileRules::checkSaved() {
    const AppController* velko = world_.velko();
    if (velko == nullptr || velko->values().problems.layoutUnreadable) {
        layout_.reset();
        return std::nullopt;
    }
    const Layout& layout = velko->ownLayout();
    const auto now = world_.mac().mainThread.now();
    if (layout_ != layout) {
        layout_ = layout;
        changedAt_ = now;
        mayDiffer_ = world_.savingFails;
    }
    if (mayDiffer_ || now - changedAt_ < patience) {
        return std::nullopt;
    }
    mayDiffer_ = true;  // there is no need to look again before something changes
    const auto saved = LayoutStore(world_.layoutFile()).load();
    const bool isSaved = saved && *saved == std::optional(layout);
    return isSaved ? std::nullopt : std::optional<std::string>("the file holds another layout than Velko");
}

std::optional<std::string> LayoutFileRules::checkUnreadable(const script::Step& done) {
    if (done.verb == Verb::fileSpoil) {
        unreadable_ = contentOf(world_.layoutFile());
        isKnown_ = false;
    } else if (done.verb == Verb::filePlace) {
        unreadable_.reset();
    }
    if (!unreadable_) {
        return std::nullopt;
    }
    isKnown_ = isKnown_ || done.verb == Verb::velkoStart || done.verb == Verb::fileReload;
    if (contentOf(world_.layoutFile()) == *unreadable_) {
        return std::nullopt;
    }
    const bool isLost = isKnown_ && !isKeptBeside(*unreadable_);
    unreadable_.reset();
    return isLost ? std::optional<std::string>("an unreadable layout is lost") : std::nullopt;
}

bool LayoutFileRules::isKeptBeside(const std::string& content) const {
    const auto folder = std::filesystem::directory_iterator(world_.layoutFile().parent_path());
    return std::ranges::any_of(folder, [&](const auto& entry) {
        return entry.path().filename().string().starts_with("layout.unreadable-") &&
               contentOf(entry.path()) == content;
    });
}

}  // namespace velko::scenarios
