#include "Scenarios/Language/Verbs.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "Velko/Ports/Surfaces.h"
#include "VelkoCore/Keys/HotKeySettings.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko::script {

namespace {

constexpr std::size_t longestPattern = 40;

/// "set NAME SWITCH" for every switch, each with a zero at its end.
constexpr auto switchPatterns = [] {
    std::array<std::array<char, longestPattern>, Switches::all.size()> patterns{};
    for (std::size_t index = 0; index < patterns.size(); ++index) {
        char* end = patterns.at(index).data();
        for (const std::string_view part :
             {std::string_view("set "), Switches::all.at(index).name, std::string_view(" SWITCH")}) {
            end = std::ranges::copy(part, end).out;
        }
    }
    return patterns;
}();

/// The rows of the switches that a log line of the reveal settings tells, or of the others.
template <bool isReveal>
constexpr auto switchRows() {
    constexpr auto belongs = [](const SwitchRow& row) { return row.words.empty() == isReveal; };
    std::array<VerbRow, static_cast<std::size_t>(std::ranges::count_if(Switches::all, belongs))> rows{};
    std::size_t next = 0;
    for (std::size_t index = 0; index < Switches::all.size(); ++index) {
        if (belongs(Switches::all.at(index))) {
            rows.at(next++) = {Verb::setSwitch, switchPatterns.at(index).data(),
                               Switches::all.at(index).name};
        }
    }
    return rows;
}

/// The tables one after the other.
template <std::size_t... sizes>
constexpr auto joined(const std::array<VerbRow, sizes>&... tables) {
    std::array<VerbRow, (sizes + ...)> rows{};
    auto end = rows.begin();
    ((end = std::ranges::copy(tables, end).out), ...);
    return rows;
}

constexpr auto verbsBeforeSwitches = std::to_array<VerbRow>({
    {Verb::say, "say TEXT"},

    {Verb::wait, "wait DURATION"},
    {Verb::sleep, "sleep DURATION"},
    {Verb::clockForward, "clock forward DURATION"},
    {Verb::clockBack, "clock back DURATION"},
    {Verb::zone, "zone ZONE"},

    {Verb::launch, "launch APP [icons ICONS] [width POINTS] [title TEXT] [heavy]"},
    {Verb::launchNeighbours, "launch neighbours"},
    {Verb::launchRegular, "launch regular APP [icons ICONS] [width POINTS] [title TEXT] [heavy]"},
    {Verb::quit, "quit APP"},
    {Verb::crash, "crash APP"},
    {Verb::hang, "hang APP"},
    {Verb::unhang, "unhang APP"},
    {Verb::slow, "slow APP DURATION"},
    {Verb::stall, "stall DURATION"},
    {Verb::activate, "activate APP [menus POINTS]"},
    {Verb::cpu, "cpu APP PERCENT"},
    {Verb::memory, "memory APP MEGABYTES"},

    {Verb::iconTitle, "icon title APP TEXT [icon ICON]"},
    {Verb::iconWidth, "icon width APP POINTS [icon ICON]"},
    {Verb::iconBadge, "icon badge APP TEXT [icon ICON]"},
    {Verb::iconAdd, "icon add APP [width POINTS] [title TEXT]"},
    {Verb::iconRemove, "icon remove APP [icon ICON]"},
    {Verb::iconHang, "icon hang APP [icon ICON]"},
    {Verb::iconUnhang, "icon unhang APP [icon ICON]"},
    {Verb::menuOpen, "menu open APP"},
    {Verb::menuClose, "menu close"},

    {Verb::clickIcon, "click icon APP [icon ICON]"},
    {Verb::clickBroom, "click broom [option] [told WAY]"},
    {Verb::rightClickBroom, "right click broom [option] [told WAY]"},
    {Verb::controlClickBroom, "control click broom [option] [told WAY]"},
    {Verb::holdBroom, "hold broom DURATION"},
    {Verb::voiceOverPressBroom, "voiceover press broom"},
    {Verb::clickFrontMenu, "click front menu"},
    {Verb::clickOutside, "click outside"},
    {Verb::pressEscape, "press escape"},
    {Verb::pressKey, "press key SURFACE [VALUE]"},
    {Verb::pressKeys, "press keys VALUE"},
    {Verb::pointAt, "point at PLACE"},
    {Verb::pointAtIcon, "point at icon APP [icon ICON]"},

    {Verb::choose, "choose TEXT"},
    {Verb::chooseIn, "choose in SURFACE CONTROL TEXT"},
    {Verb::openMenuIn, "open menu in SURFACE CONTROL"},
    {Verb::press, "press SURFACE CONTROL [VALUE]"},
    {Verb::drag, "drag APP SURFACE"},
    {Verb::drop, "drop APP SURFACE CONTROL"},
    {Verb::close, "close SURFACE"},

    {Verb::place, "place APP SECTION"},
    {Verb::open, "open APP"},
    {Verb::showMe, "show me APP"},
    {Verb::showAll, "show all"},
    {Verb::accept, "accept APP"},
    {Verb::dismiss, "dismiss APP"},
    {Verb::alwaysKeep, "always keep APP"},
    {Verb::showChanges, "show changes APP SWITCH"},
    {Verb::showToAudience, "show to audience APP SWITCH"},
    {Verb::forget, "forget APP"},
    {Verb::undo, "undo"},
    {Verb::redo, "redo"},
    {Verb::finishSetup, "finish setup"},
    {Verb::exportLayout, "export [FILE]"},
    {Verb::importLayout, "import [FILE]"},
    {Verb::command, "command TEXT"},
    {Verb::openAddress, "open address TEXT"},
    {Verb::answer, "answer ANSWER"},

});

constexpr auto verbsAmongSwitches = std::to_array<VerbRow>({
    {Verb::setNewIcons, "set new-icons SECTION"},
    {Verb::setAutoTuck, "set auto-tuck SECONDS"},
    {Verb::setShowAllFrom, "set show-all-from WIDTH"},
});

constexpr auto verbsAfterSwitches = std::to_array<VerbRow>({
    {Verb::setNotchedStyle, "set notched-style STYLE"},
    {Verb::setOtherStyle, "set other-style STYLE"},
    {Verb::setLogin, "set login SWITCH"},
    {Verb::setKey, "set key ACTION VALUE"},

    {Verb::activityStart, "activity start"},
    {Verb::activityEnd, "activity end"},
    {Verb::displays, "displays DISPLAYS"},
    {Verb::trustGrant, "trust grant [unnoticed]"},
    {Verb::trustRevoke, "trust revoke [unnoticed]"},
    {Verb::tapDisable, "tap disable"},
    {Verb::tapDie, "tap die"},
    {Verb::tapRefuse, "tap refuse"},
    {Verb::tapAllow, "tap allow"},
    {Verb::hitsEndAt, "hits end at OWNER"},
    {Verb::engineRefuse, "engine refuse [COUNT]"},
    {Verb::engineRaise, "engine raise"},
    {Verb::engineSlow, "engine slow DURATION"},
    {Verb::engineMissing, "engine missing"},
    {Verb::engineRecover, "engine recover"},
    {Verb::keysTaken, "keys taken VALUE"},
    {Verb::keysFree, "keys free VALUE"},
    {Verb::broomLies, "broom lies SPOT"},
    {Verb::imagesCost, "images cost DURATION"},
    {Verb::nap, "nap"},
    {Verb::sleepDisplays, "screens sleep"},
    {Verb::wakeDisplays, "screens wake"},
    {Verb::switchSpace, "switch space"},
    {Verb::leaveSession, "leave session"},
    {Verb::returnToSession, "return to session"},

    {Verb::filePlace, "file place APP SECTION"},
    {Verb::fileSpoil, "file spoil"},
    {Verb::fileReload, "file reload"},
    {Verb::savingFail, "saving fail"},
    {Verb::savingRecover, "saving recover"},

    {Verb::managedPlace, "managed place APP SECTION"},
    {Verb::managedPopOut, "managed pop-out SWITCH"},
    {Verb::managedSpoil, "managed spoil"},
    {Verb::managedRemove, "managed remove"},

    {Verb::velkoStart, "velko start"},
    {Verb::velkoReopen, "velko reopen"},
    {Verb::velkoQuit, "velko quit"},
    {Verb::velkoCrash, "velko crash"},

    {Verb::expectVisible, "expect visible APP"},
    {Verb::expectHidden, "expect hidden APP"},
    {Verb::expectNoRoom, "expect no-room APP"},
    {Verb::expectWaiting, "expect waiting APP"},
    {Verb::expectSuggested, "expect suggested APP"},
    {Verb::expectState, "expect state STATE"},
    {Verb::expectHealth, "expect health HEALTH"},
    {Verb::expectTidied, "expect tidied APPS"},
    {Verb::expectMenu, "expect menu APP"},
    {Verb::expectLogged, "expect logged TEXT [times TIMES]"},
    {Verb::expectOpen, "expect open SURFACE"},
    {Verb::expectClosed, "expect closed SURFACE"},
    {Verb::expectSays, "expect says SURFACE TEXT"},
    {Verb::expectLacks, "expect lacks SURFACE TEXT"},
    {Verb::expectToolTip, "expect tooltip TEXT"},
    {Verb::expectClicked, "expect clicked APP"},
    {Verb::expectUnclicked, "expect unclicked APP"},
    {Verb::expectChoice, "expect choice TEXT"},
    {Verb::expectNoChoice, "expect no choice"},
    {Verb::expectAnnounced, "expect announced TEXT"},
    {Verb::expectAnswer, "expect answer TEXT"},
});

constexpr auto allVerbs = joined(verbsBeforeSwitches, switchRows<false>(), verbsAmongSwitches,
                                 switchRows<true>(), verbsAfterSwitches);

constexpr auto numberOperands = std::to_array<NumberOperand>({
    {"APPS", &Step::amount, 0, 1000},
    {"COUNT", &Step::amount, 1, 1000},
    {"ICON", &Step::icon, 1, 20},
    {"ICONS", &Step::icons, 0, 20},
    {"MEGABYTES", &Step::amount, 1, 1'000'000},
    {"PERCENT", &Step::amount, 0, 1600},
    {"POINTS", &Step::width, 1, 1500},
    {"SECONDS", &Step::amount, 0, 60},
    {"TIMES", &Step::amount, 0, 1000},
    {"WIDTH", &Step::amount, 0, 10'000},
});

/// The names of all surfaces, with spaces between them and a zero at the end.
constexpr auto surfaceNames = [] {
    std::array<char, 120> names{};
    char* end = names.data();
    for (const Surfaces::Traits& surface : Surfaces::all()) {
        end = std::ranges::copy(std::string_view(end == names.data() ? "" : " "), end).out;
        end = std::ranges::copy(surface.name, end).out;
    }
    return names;
}();

/// The names of what keys can do, likewise.
constexpr auto actionNames = [] {
    std::array<char, 100> names{};
    char* end = names.data();
    for (const HotKeyRow& row : hotKeyActions) {
        end = std::ranges::copy(std::string_view(end == names.data() ? "" : " "), end).out;
        end = std::ranges::copy(row.key, end).out;
    }
    return names;
}();

constexpr auto wordOperands = std::to_array<WordOperand>({
    {"ACTION", actionNames.data()},
    {"ANSWER", "agree cancel"},
    {"DISPLAYS",
     "laptop laptop-inset laptop-room small desk wide laptop+desk desk+laptop laptop+wide wide+laptop none"},
    {"HEALTH", "ok trust-missing engine-missing layout-unreadable"},
    {"OWNER", "host app"},
    {"PLACE", "broom bar shelf desktop"},
    {"SECTION", "bar tucked buried"},
    {"SPOT", "bar notch nowhere stub"},
    {"STATE", "collapsed revealed buried opening presenting"},
    {"STYLE", "inline shelf"},
    {"SURFACE", surfaceNames.data()},
    {"SWITCH", "on off"},
    {"WAY", "usual mouse system other stale doubled lost"},
    {"ZONE", "UTC America/New_York Asia/Kolkata Europe/Berlin Pacific/Auckland Pacific/Honolulu"},
});

constexpr auto allUnits =
    std::to_array<Unit>({{"days", 86'400'000}, {"h", 3'600'000}, {"min", 60'000}, {"s", 1000}, {"ms", 1}});

template <class Rows>
auto* named(const Rows& rows, std::string_view name) {
    const auto row = std::ranges::find(rows, name, [](const auto& each) { return each.name; });
    return row == rows.end() ? nullptr : &*row;
}

}  // namespace

std::span<const VerbRow> verbs() {
    return allVerbs;
}

const NumberOperand* numberOperand(std::string_view name) {
    return named(numberOperands, name);
}

const WordOperand* wordOperand(std::string_view name) {
    return named(wordOperands, name);
}

std::span<const Unit> units() {
    return allUnits;
}

}  // namespace velko::script
