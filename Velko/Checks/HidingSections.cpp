#include <algorithm>
#include <cctype>
#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/Checks/Subject.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::SelfCheck {

namespace {

using namespace std::chrono_literals;

/// A type encoding without the offsets in the frame, which differ between processors.
std::string withoutOffsets(std::string encoding) {
    std::erase_if(encoding, [](unsigned char each) { return std::isdigit(each) != 0; });
    return encoding;
}

/// Compares how the framework's methods take and return values with how they are called.
void checkEncodings(const Platform& platform, Notes& notes) {
    const PrivateFramework& framework = platform.privateFramework;
    for (const VKAssessment::Call& call : VKAssessment::calls) {
        const auto image = framework.imagePath(call.className);
        const auto classes = framework.methods(image.value_or(""));
        const auto found = classes ? classes->find(call.className) : decltype(classes->end()){};
        if (!classes || found == classes->end()) {
            continue;  // that the class is missing has been said
        }
        const auto method = std::ranges::find_if(found->second, [&](const RuntimeMethod& each) {
            return !each.isClassMethod && each.selector == call.selector;
        });
        const std::string name = "types of -[" + std::string(call.className) + " " + call.selector + "]";
        if (method == found->second.end()) {
            notes.tell(name, "not listed; it may be a method of a class above");
        } else {
            notes.expect(name, withoutOffsets(method->typeEncoding) == call.types, method->typeEncoding);
        }
    }
}

}  // namespace

void checkFramework(const Subject& subject, Notes& notes) {
    const VKAssessment::ProbeReport report = VKAssessment::probeReport(subject.platform);
    for (const VKAssessment::Check& check : report.checks) {
        notes.expect(check.name, check.ok);
    }
    if (report.loadError) {
        notes.tell("the loader's words", *report.loadError);
    }
    notes.tell("library", report.image);
    for (const auto& [className, methods] : report.classes) {
        for (const std::string& method : methods) {
            notes.tell(className, method);
        }
    }
    checkEncodings(subject.platform, notes);
}

namespace {

constexpr auto answerLimit = 10s;
constexpr auto settlingLimit = 5s;
constexpr auto trialTime = 5s;
constexpr auto hiderTime = 20s;

/// Whose icons show, as the menu bar's host tells.
struct Shown {
    std::set<ProcessID> apps;
    std::size_t systemItems = 0;
};

/// Icons that the host draws for itself.
std::size_t systemItemsOf(const Platform& platform, ProcessID host) {
    constexpr int deepest = 5;
    std::size_t count = 0;
    const Accessibility& accessibility = platform.accessibility;
    walkOthers(platform, AX::application(accessibility, host), 0, [&](const Walked& walked) {
        if (walked.element == nullptr || walked.pid != host) {
            return false;
        }
        const auto role = AX::string(accessibility, *walked.element, "AXRole").value_or("");
        if (walked.depth == 1) {
            return role == "AXWindow";
        }
        count += role == "AXButton" || role == "AXMenuBarItem" ? 1 : 0;
        return walked.depth < deepest;
    });
    return count;
}

Shown look(const Platform& platform) {
    const auto host = AX::menuBarHostPID(platform);
    Shown shown{.apps = Inventory::visiblePIDs(platform),
                .systemItems = host ? systemItemsOf(platform, *host) : 0};
    shown.apps.erase(platform.processes.ownPID());
    if (host) {
        shown.apps.erase(*host);
    }
    return shown;
}

/// The apps that showed before, still run, and do not show now.
std::set<ProcessID> missing(const Platform& platform, const Shown& before, const Shown& now) {
    std::set<ProcessID> pids;
    for (const ProcessID pid : before.apps) {
        if (!now.apps.contains(pid) && platform.processes.exists(pid)) {
            pids.insert(pid);
        }
    }
    return pids;
}

/// The icons as their apps describe them.
std::vector<MenuBarItem> describedIcons(const Subject& subject) {
    std::optional<std::vector<MenuBarItem>> items;
    const Task reading = Inventory::items(subject.platform, {},
                                          [&](Inventory::Found found) { items = std::move(found.items); });
    static_cast<void>(waitUntil(subject, answerLimit, [&] { return items.has_value(); }));
    return items.value_or(std::vector<MenuBarItem>{});
}

/// One trial of hiding, from looking at the menu bar before to finding it unchanged afterwards.
class Trial final : private NonCopyable {
 public:
    Trial(const Subject& subject, Notes& notes)
        : subject_(subject),
          notes_(notes),
          before_(look(subject.platform)),
          described_(describedIcons(subject)) {}

    [[nodiscard]] bool isAnythingToHide() const { return !before_.apps.empty(); }

    /// Waits until icons are gone.
    [[nodiscard]] bool awaitHiding() const {
        return waitUntil(subject_, settlingLimit, [&] {
            return !missing(subject_.platform, before_, look(subject_.platform)).empty();
        });
    }

    void checkHidden() const {
        const Platform& platform = subject_.platform;
        const bool isHidden = awaitHiding();
        const Shown now = look(platform);
        notes_.expect("icons of other apps are hidden", isHidden,
                      std::to_string(missing(platform, before_, now).size()) + " of " +
                          std::to_string(before_.apps.size()));
        notes_.tell("still shown", namesOf(platform, now.apps));
        const auto described = describedIcons(subject_);
        const auto same = std::ranges::count_if(
            described, [&](const MenuBarItem& item) { return std::ranges::count(described_, item) > 0; });
        notes_.tell("the apps themselves describe", std::to_string(described_.size()) + " icons before, " +
                                                        std::to_string(described.size()) + " now, " +
                                                        std::to_string(same) + " of them unchanged");
        notes_.expect("the system's own icons stay", now.systemItems >= before_.systemItems,
                      std::to_string(now.systemItems) + " of " + std::to_string(before_.systemItems));
    }

    void checkEverythingIsBack(const std::string& after) const {
        const Platform& platform = subject_.platform;
        const auto start = platform.mainThread.now();
        const bool isBack = waitUntil(subject_, settlingLimit, [&] {
            const Shown now = look(platform);
            return missing(platform, before_, now).empty() && now.systemItems >= before_.systemItems;
        });
        notes_.expect("everything is back " + after, isBack,
                      isBack ? "after " + milliseconds(platform.mainThread.now() - start)
                             : "missing: " + namesOf(platform, missing(platform, before_, look(platform))));
    }

 private:
    const Subject& subject_;
    Notes& notes_;
    Shown before_;
    std::vector<MenuBarItem> described_;
};

VisibilityPlan onlyOurs(const Subject& subject) {
    return VisibilityPlan::allow({subject.info.bundleID});
}

std::string wordsFor(const EngineFailure& failure) {
    const auto* const error = std::get_if<FrameworkError>(&failure);
    return error == nullptr ? describe(failure)
                            : error->domain + " " + std::to_string(error->code) + ": " + error->description;
}

/// Asks the system to hide. Returns whether it does.
bool hide(const Subject& subject, AssessmentEngine& engine, Notes& notes) {
    std::optional<MenuBarEngine::Result> result;
    engine.apply(onlyOurs(subject), true, [&](const MenuBarEngine::Result& told) { result = told; });
    static_cast<void>(waitUntil(subject, answerLimit, [&] { return result.has_value(); }));
    if (!result) {
        engine.showAll();  // an answer that comes after all finds nobody
        notes.expect("the system answers the wish to hide", false, "no answer");
        return false;
    }
    notes.expect("the system accepts the wish to hide", result->has_value(),
                 *result ? "in " + milliseconds(**result) : wordsFor(result->error()));
    return result->has_value();
}

void tryHere(const Subject& subject, const Trial& trial, Notes& notes) {
    AssessmentEngine engine(subject.platform);
    if (!hide(subject, engine, notes)) {
        return;
    }
    const auto end = subject.platform.mainThread.now() + trialTime;
    trial.checkHidden();
    subject.pass(std::max(end - subject.platform.mainThread.now(), Uptime::zero()));
    engine.showAll();
    trial.checkEverythingIsBack("after the end of hiding");
}

void tryInAProcessThatDies(const Subject& subject, const Trial& trial, Notes& notes) {
    if (subject.bench == nullptr || !subject.bench->startHider()) {
        notes.expect("a second process is started", false);
        return;
    }
    const bool isHidden = trial.awaitHiding();
    subject.bench->killHider();
    notes.expect("a second process hides icons", isHidden);
    trial.checkEverythingIsBack("after a process that hid them was killed");
}

bool isAnotherVelkoRunning(const Subject& subject) {
    const auto pids = subject.platform.workspace.pids(subject.info.bundleID);
    return std::ranges::any_of(pids,
                               [&](ProcessID pid) { return pid != subject.platform.processes.ownPID(); });
}

}  // namespace

void tryHiding(const Subject& subject, Notes& notes) {
    if (isAnotherVelkoRunning(subject)) {
        notes.expect("no other Velko is running", false, "quit Velko, and then try again");
        return;
    }
    if (!isSurelyTrusted(subject.platform)) {
        // Then nothing can be seen, but the system's answer is worth knowing.
        AssessmentEngine engine(subject.platform);
        static_cast<void>(hide(subject, engine, notes));
        engine.showAll();
        notes.tell("the menu bar while icons are hidden", "not seen: there is no permission");
        return;
    }
    const Trial trial(subject, notes);
    if (!trial.isAnythingToHide()) {
        notes.tell("hiding", "not tried: the menu bar's host names no app that shows an icon");
        return;
    }
    notes.say(
        "Now look at the menu bar. For five seconds only the system's own icons should stay. "
        "Then all icons come back, and the same happens once more, for a shorter time.");
    tryHere(subject, trial, notes);
    tryInAProcessThatDies(subject, trial, notes);
}

int hideForOthers(const Subject& subject) {
    Notes silent;
    AssessmentEngine engine(subject.platform);
    const bool isHidden = hide(subject, engine, silent);
    if (isHidden) {
        subject.pass(hiderTime);
    }
    engine.showAll();
    return isHidden ? 0 : 1;
}

}  // namespace velko::SelfCheck
