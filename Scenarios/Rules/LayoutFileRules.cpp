#include "Scenarios/Rules/LayoutFileRules.h"

#include <algorithm>
#include <filesystem>

#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutStore.h"
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

}  // namespace

std::optional<std::string> LayoutFileRules::check(const script::Step& done) {
    if (world_.savingFails || done.verb == Verb::filePlace || done.verb == Verb::fileSpoil) {
        mayDiffer_ = true;
    }
    const auto lost = checkUnreadable(done);
    return lost ? lost : checkSaved();
}

std::optional<std::string> LayoutFileRules::checkSaved() {
    const AppController* velko = world_.velko();
    if (velko == nullptr || velko->values().problems.layoutUnreadable) {
        layout_.reset();
        return std::nullopt;
    }
    const Layout& layout = velko->values().layout;
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
