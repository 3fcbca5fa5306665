#include "Velko/Checks/SampleTrees.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "Velko/App/AppDelegate.h"
#include "Velko/App/Log.h"
#include "Velko/Checks/SampleMac.h"
#include "Velko/View/Tree.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"

namespace velko::SelfCheck {

namespace {

using namespace std::chrono_literals;
using Visit = std::function<void(const Sample&)>;

constexpr auto starting = 1500ms;  ///< until the first scan is in
constexpr auto settling = 100ms;
constexpr std::size_t mostSteps = 60;

std::string plural(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// A Velko on an imaginary Mac, with a folder that goes with it.
class SampleVelko final : private NonCopyable {
 public:
    SampleVelko(const Subject& subject, const Visit& visit, const Layout& layout, std::size_t apps,
                bool isTrusted = true)
        : subject_(subject),
          visit_(visit),
          folder_(newFolder()),
          mac_(subject.platform, sampleApps(apps), isTrusted),
          log_(subject.platform.mainThread, folder_ / "Velko.log") {
        const LayoutStore store(folder_ / "layout.json");
        static_cast<void>(store.save(layout));
        velko_ = std::make_unique<AppDelegate>(
            AppDelegate::Parts{.controller = {.platform = mac_.platform(),
                                              .ports = mac_.appPorts(),
                                              .log = log_,
                                              .store = store,
                                              .engine = std::make_unique<AssessmentEngine>(mac_.platform()),
                                              .info = {.version = subject.info.version,
                                                       .build = subject.info.build,
                                                       .bundlePath = "/Applications/Velko.app"}},
                               .propertyLists = subject.propertyLists,
                               .homeFolder = folder_});
        velko_->didFinishLaunching();
        subject.pass(starting);
    }
    ~SampleVelko() {
        velko_->willTerminate();
        subject_.pass(settling);
        velko_.reset();
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }

    [[nodiscard]] AppDelegate& delegate() { return *velko_; }
    [[nodiscard]] SampleMac& mac() { return mac_; }
    [[nodiscard]] const view::Node* tree(Surfaces::Kind kind) const { return mac_.tree(kind); }

    void show(Surfaces::Kind kind, std::string name) {
        subject_.pass(settling);
        if (const view::Node* const now = mac_.tree(kind)) {
            visit_({.name = std::move(name), .kind = kind, .tree = *now, .menu = mac_.menu()});
        }
    }
    void close(Surfaces::Kind kind) {
        mac_.close(kind);
        subject_.pass(settling);
    }
    void pass() const { subject_.pass(settling); }

 private:
    /// A folder that nobody else has. Without one nothing can be saved, and the samples show that.
    static std::filesystem::path newFolder() {
        std::error_code error;
        std::string pattern = std::filesystem::temp_directory_path(error) / "velko-self-check-XXXXXX";
        const char* const made = ::mkdtemp(pattern.data());
        return made == nullptr ? std::filesystem::path(pattern) : std::filesystem::path(made);
    }

    const Subject& subject_;
    const Visit& visit_;
    std::filesystem::path folder_;
    SampleMac mac_;
    Log log_;
    std::unique_ptr<AppDelegate> velko_;
};

Layout layoutWith(std::size_t tucked, std::size_t waiting = 0) {
    Layout layout;
    layout.hasCompletedSetup = true;
    layout.reveal.notchedStyle = layout.reveal.otherStyle = RevealStyle::shelf;
    BundleIDs seen;
    for (const SampleApp& app : sampleApps(tucked)) {
        layout.sections[app.bundleID] = Section::tucked;
        seen.insert(app.bundleID);
    }
    for (const SampleApp& app : sampleApps(waiting)) {
        layout.sections[app.bundleID] = Section::tucked;
        layout.inbox.push_back(app.bundleID);
        seen.insert(app.bundleID);
    }
    layout.seenApps = std::move(seen);
    return layout;
}

void visitSettings(const Subject& subject, const Visit& visit) {
    SampleVelko velko(subject, visit, layoutWith(12), 15);
    velko.delegate().reopen(false);
    velko.pass();
    std::vector<view::Pages::Tab> tabs;
    const view::Node* const first = velko.tree(Surfaces::Kind::settings);
    std::string pages;
    view::walk(first == nullptr ? view::Node() : *first, [&](const view::Node& node) {
        if (const auto* const found = std::get_if<view::Pages>(&node.content)) {
            tabs = found->tabs;
            pages = node.id;
        }
    });
    for (std::size_t tab = 0; tab < tabs.size(); ++tab) {
        const view::Node* const tree = velko.tree(Surfaces::Kind::settings);
        if (tree != nullptr) {
            view::perform(view::Node(*tree), pages, static_cast<std::int64_t>(tab));
        }
        velko.show(Surfaces::Kind::settings, "settings, " + tabs[tab].title);
    }
}

void visitEarlierLayouts(const Subject& subject, const Visit& visit) {
    SampleVelko velko(subject, visit, layoutWith(12), 15);
    velko.delegate().controller().completeSetup({{sampleApps(1).front().bundleID, Section::buried}});
    velko.delegate().reopen(false);
    velko.pass();
    for (const auto& [control, value] :
         {std::pair("pages", view::Input(std::int64_t{1})), std::pair("earlier-layouts", view::Input())}) {
        if (const view::Node* const tree = velko.tree(Surfaces::Kind::settings)) {
            view::perform(view::Node(*tree), control, value);
        }
        velko.pass();
    }
    velko.show(Surfaces::Kind::history, "earlier layouts");
}

void visitSearch(const Subject& subject, const Visit& visit) {
    SampleVelko velko(subject, visit, layoutWith(12), 15);
    velko.mac().click(true);
    velko.pass();
    velko.delegate().openSearch("");
    velko.show(Surfaces::Kind::search, "search");
    velko.delegate().openSearch("mail");
    velko.show(Surfaces::Kind::search, "search for mail");
}

/// No app of the imaginary Mac opens its menu.
void visitMessage(const Subject& subject, const Visit& visit) {
    SampleVelko velko(subject, visit, layoutWith(1), 1);
    velko.delegate().controller().open(sampleApps(1).front().bundleID);
    subject.pass(starting);
    velko.show(Surfaces::Kind::message, "message");
}

void visitNote(const Subject& subject, const Visit& visit, std::size_t questions) {
    SampleVelko velko(subject, visit, layoutWith(0, questions), questions);
    velko.mac().click();
    velko.show(Surfaces::Kind::note, "note with " + plural(questions, "question"));
}

void visitShelf(const Subject& subject, const Visit& visit, std::size_t tiles) {
    SampleVelko velko(subject, visit, layoutWith(tiles), tiles);
    velko.mac().click();
    velko.show(Surfaces::Kind::shelf, "shelf with " + plural(tiles, "tile"));
}

/// Everything that a tree says, to notice when it is another step.
std::string wordsIn(const view::Node& tree) {
    std::string words;
    view::walk(tree, [&](const view::Node& node) { words += node.id + "=" + view::spoken(node) + ";"; });
    return words;
}

/// Presses what leads on: the Return key's button, or else the first button that changes something.
bool goOn(const SampleVelko& velko, const std::string& before) {
    const view::Node* const shown = velko.tree(Surfaces::Kind::setup);
    if (shown == nullptr) {
        return false;
    }
    const view::Node tree = *shown;
    const auto isElsewhere = [&] {
        velko.pass();
        const view::Node* const now = velko.tree(Surfaces::Kind::setup);
        return now == nullptr || wordsIn(*now) != before;
    };
    if (view::pressKey(tree, {.key = view::Shortcut::Key::enter}) && isElsewhere()) {
        return true;
    }
    bool isDone = false;
    view::walk(tree, [&](const view::Node& node) {
        isDone = isDone || (std::holds_alternative<view::Button>(node.content) && node.isEnabled &&
                            view::perform(tree, node.id, {}) && isElsewhere());
    });
    return isDone;
}

void visitSetup(const Subject& subject, const Visit& visit, bool isTrusted) {
    SampleVelko velko(subject, visit, {}, 3, isTrusted);
    std::set<std::string> seen;
    for (std::size_t step = 1; step <= mostSteps; ++step) {
        const view::Node* const tree = velko.tree(Surfaces::Kind::setup);
        const std::string words = tree == nullptr ? "" : wordsIn(*tree);
        if (tree == nullptr || !seen.insert(words).second) {
            break;
        }
        const std::string name = isTrusted ? "setup " : "setup without permission ";
        velko.show(Surfaces::Kind::setup, name + std::to_string(step));
        if (!goOn(velko, words)) {
            break;
        }
    }
}

}  // namespace

void visitSamples(const Subject& subject, const Visit& visit) {
    visitSettings(subject, visit);
    visitEarlierLayouts(subject, visit);
    visitSearch(subject, visit);
    visitMessage(subject, visit);
    for (const std::size_t questions : {1U, 12U}) {
        visitNote(subject, visit, questions);
    }
    for (const std::size_t tiles : {1U, 9U, 40U}) {
        visitShelf(subject, visit, tiles);
    }
    for (const bool isTrusted : {true, false}) {
        visitSetup(subject, visit, isTrusted);
    }
}

}  // namespace velko::SelfCheck
