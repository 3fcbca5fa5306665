#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "Simulator/Machine/SimulatedSession.h"
#include "Velko/Flows/LayoutTransfer.h"
#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Time/Timing.h"
#include "tests/Velko/SettingsOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// Velko on a Mac where an administrator places a layout.
class Managed : public SettingsOnMac {
 protected:
    Managed() {
        managed = {.file = folder.path() / "Managed" / "layout.json", .owner = ::geteuid()};
        std::filesystem::create_directory(managed.file.parent_path());
        launch("com.a.vpn", "VPN", Section::tucked);
        launch("com.b.chat", "Chat", Section::tucked);
        launch("com.c.mail", "Mail", Section::bar);
    }

    void administer(const std::string& content) const {
        writeFile(managed.file, content);
        ::chmod(managed.file.c_str(), 0644);
    }

    /// The look that comes by itself at the latest.
    void lookAgain() { pass(2 * Timing::managedLookInterval + 1s); }

    [[nodiscard]] Section sectionOf(const BundleID& app) const { return values().layout.section(app); }
};

TEST_F(Managed, WinsOverTheUsersLayoutAndNeverGetsIntoTheirFile) {
    administer(R"({"sections":{"com.a.vpn":"bar","com.b.chat":"buried"},"popOutOnChange":false,)"
               R"("reveal":{"hover":true}})");
    start();
    EXPECT_TRUE(logged("[managed] 2 apps and 2 settings from "));
    EXPECT_TRUE(shows("com.a.vpn") && !shows("com.b.chat"));
    EXPECT_TRUE(!values().layout.popOutOnChange && values().layout.reveal.hover);

    velko->place(BundleIDs{"com.a.vpn", "com.c.mail"}, Section::tucked);
    velko->completeSetup({{"com.b.chat", Section::bar}, {"com.c.mail", Section::buried}});
    velko->forget({"com.a.vpn"});
    velko->preferences().setSwitch(Switch::popOutOnChange, true);
    velko->preferences().setSwitch(Switch::revealOnHover, false);
    velko->preferences().setAlwaysKeep("com.b.chat", false);
    velko->autopilot().accept({.bundleID = "com.a.vpn",
                               .change = TidySuggestion::MoveTo{Section::buried},
                               .reason = TidySuggestion::Unused{}});
    RevealSettings reveal{.autoTuckSeconds = 20, .hover = false};
    velko->preferences().setReveal(reveal);
    Layout theirs;
    theirs.sections = {{"com.a.vpn", Section::buried}, {"com.d.new", Section::tucked}};
    const auto export_ = folder.path() / "theirs.velko";
    writeFile(export_, LayoutExport::of(theirs).data());
    EXPECT_TRUE(velko->transfer().importFrom(export_));
    pass(1s);
    EXPECT_TRUE(shows("com.a.vpn") && !shows("com.b.chat"));
    EXPECT_TRUE(!values().layout.popOutOnChange && values().layout.reveal.hover);
    EXPECT_EQ(timesLogged("[managed] stays"), 7);
    EXPECT_TRUE(logged("sorted: 0 in the bar, 0 tucked, 1 buried"));
    EXPECT_EQ(sectionOf("com.d.new"), Section::tucked) << "what is not managed is imported";
    while (velko->undo()) {
        pass(1s);
    }
    EXPECT_TRUE(shows("com.a.vpn") && !shows("com.b.chat"));

    EXPECT_EQ(saved().section("com.a.vpn"), Section::tucked);
    EXPECT_EQ(saved().section("com.b.chat"), Section::tucked);
    EXPECT_EQ(saved().section("com.c.mail"), Section::bar);
    EXPECT_TRUE(saved().popOutOnChange && !saved().reveal.hover && saved().alwaysKeep.empty());
    EXPECT_TRUE(velko->transfer().exportTo(export_));
    EXPECT_EQ(LayoutExport::read(contentOf(export_))->sections, saved().sections);
}

TEST_F(Managed, IsFollowedWhenItComesChangesBreaksAndGoes) {
    start();
    EXPECT_FALSE(logged("[managed]"));
    velko->place("com.c.mail", Section::tucked);
    administer(R"({"sections":{"com.a.vpn":"bar","com.b.chat":7}})");
    lookAgain();
    EXPECT_TRUE(shows("com.a.vpn") && !shows("com.b.chat"));
    EXPECT_EQ(values().managedFaults.size(), 1U);
    EXPECT_TRUE(logged("[managed] left out: sections.com.b.chat: expected"));
    EXPECT_FALSE(velko->undo()) << "what was done before is about another layout";

    administer("no JSON");
    mac.session.changeSpace();
    pass(2s);
    EXPECT_TRUE(!shows("com.a.vpn") && logged("[managed] IGNORED: "));
    EXPECT_EQ(values().managedFaults.size(), 1U);

    administer(R"({"newIconDefault":"buried"})");
    velko->loadLayout();
    pass(1s);
    EXPECT_EQ(values().layout.newIconDefault, Section::buried);
    EXPECT_TRUE(values().managedFaults.empty());

    std::filesystem::remove(managed.file);
    lookAgain();
    EXPECT_TRUE(values().managed.isEmpty() && logged("[managed] nothing any more"));
    EXPECT_EQ(values().layout, saved());
    EXPECT_EQ(timesLogged("[managed]"), 5) << "nothing is told twice";
}

TEST_F(Managed, IsLockedInTheSettingsAndSaysWhy) {
    administer(R"({"sections":{"com.a.vpn":"bar","com.z.elsewhere":"buried"},"alwaysKeep":["com.c.mail"],)"
               R"("popOutOnChange":false,"newIconDefault":"tucked","searchInMenu":true,)"
               R"("reveal":{"autoTuckSeconds":10,"otherStyle":"shelf"},"oops":1})");
    startSettings();
    const auto isLocked = [this](const std::string& id) {
        const view::Node* const node = find(id);
        return node != nullptr && !node->isEnabled && node->help == "Managed by your organisation";
    };
    EXPECT_TRUE(isLocked("section:com.a.vpn") && !isLocked("section:com.b.chat"));
    EXPECT_TRUE(isLocked("new-icons") && !isLocked("ask"));
    EXPECT_EQ(words("managed:com.a.vpn"), "Managed by your organisation");
    EXPECT_FALSE(find("app:com.z.elsewhere")) << "not every Mac has every app";
    EXPECT_EQ(words("problem:managed:what"), "Part of your organisation's layout can't be used.");
    const view::Menu more = view::menuOf(*window().content(), "more:com.c.mail");
    EXPECT_TRUE(!more.at(1).isEnabled && more.at(1).isChecked) << more.at(1).title;
    set("apps", view::Selected{{"app:com.a.vpn", "app:com.b.chat"}});
    EXPECT_EQ(words("selected:managed"), "1 managed by your organisation");
    set("place-selected", std::int64_t{2});
    EXPECT_EQ(sectionOf("com.a.vpn"), Section::bar);
    EXPECT_EQ(sectionOf("com.b.chat"), Section::buried);
    openPage(1);
    EXPECT_TRUE(isLocked("pop-out") && isLocked("auto-tuck") && isLocked("style-other"));
    EXPECT_FALSE(isLocked("hover") || isLocked("style-notched"));
    openPage(2);
    EXPECT_TRUE(isLocked("search-in-menu"));
}

TEST_F(Managed, NobodyIsAskedAboutAnAppThatHasItsPlace) {
    administer(R"({"sections":{"com.d.new":"bar"},"leaveNewIconsOut":false})");
    start();
    pass(std::chrono::hours(25));
    launch("com.d.new");
    launch("com.e.other");
    pass(20s);
    EXPECT_EQ(values().layout.inbox, std::vector<BundleID>{"com.e.other"});
    EXPECT_TRUE(shows("com.d.new"));
    administer(R"({"sections":{"com.e.other":"buried"}})");
    lookAgain();
    EXPECT_TRUE(values().layout.inbox.empty() && !shows("com.e.other"));
    velko->place("com.e.other", Section::bar);
    std::filesystem::remove(managed.file);
    lookAgain();
    EXPECT_EQ(values().layout.inbox, std::vector<BundleID>{"com.e.other"}) << "it waits for its answer again";
}

}  // namespace
}  // namespace velko
