#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace velko::script {

/// Everything that can happen in a scenario. The table of verbs says how each is written.
enum class Verb {
    // Telling
    say,
    // Time
    wait,
    sleep,
    clockForward,
    clockBack,
    zone,
    // Apps
    launch,
    launchNeighbours,
    launchRegular,
    quit,
    crash,
    hang,
    unhang,
    slow,
    stall,
    activate,
    cpu,
    memory,
    // Icons and menus
    iconTitle,
    iconWidth,
    iconBadge,
    iconAdd,
    iconRemove,
    iconHang,
    iconUnhang,
    menuOpen,
    menuClose,
    // The pointer and the keyboard
    clickIcon,
    clickBroom,
    rightClickBroom,
    controlClickBroom,
    clickFrontMenu,
    holdBroom,
    voiceOverPressBroom,
    clickOutside,
    pressEscape,
    pressKey,
    pressKeys,
    pointAt,
    pointAtIcon,
    // What Velko shows
    choose,
    chooseIn,
    openMenuIn,
    press,
    drag,
    drop,
    close,
    // What the user does in Velko
    place,
    open,
    showMe,
    showAll,
    accept,
    dismiss,
    alwaysKeep,
    showChanges,
    showToAudience,
    forget,
    undo,
    redo,
    finishSetup,
    exportLayout,
    importLayout,
    command,
    openAddress,
    answer,
    // Settings
    setSwitch,
    setNewIcons,
    setAutoTuck,
    setShowAllFrom,
    setNotchedStyle,
    setOtherStyle,
    setLogin,
    setKey,
    // The system
    activityStart,
    activityEnd,
    displays,
    trustGrant,
    trustRevoke,
    tapDisable,
    tapDie,
    tapRefuse,
    tapAllow,
    hitsEndAt,
    engineRefuse,
    engineRaise,
    engineSlow,
    engineMissing,
    engineRecover,
    keysTaken,
    keysFree,
    broomLies,
    imagesCost,
    nap,
    sleepDisplays,
    wakeDisplays,
    switchSpace,
    leaveSession,
    returnToSession,
    // Files
    filePlace,
    fileSpoil,
    fileReload,
    savingFail,
    savingRecover,
    // What an administrator places
    managedPlace,
    managedPopOut,
    managedSpoil,
    managedRemove,
    // Velko itself
    velkoStart,
    velkoReopen,
    velkoQuit,
    velkoCrash,
    // What must hold
    expectVisible,
    expectHidden,
    expectNoRoom,
    expectWaiting,
    expectSuggested,
    expectState,
    expectHealth,
    expectTidied,
    expectMenu,
    expectLogged,
    expectOpen,
    expectClosed,
    expectSays,
    expectLacks,
    expectToolTip,
    expectClicked,
    expectUnclicked,
    expectChoice,
    expectNoChoice,
    expectAnnounced,
    expectAnswer,
};

/// One event of a scenario: a verb and its operands. The table of verbs says which operands a verb has; the
/// other members are not set.
struct Step {
    Verb verb = Verb::wait;
    std::string app{};                   ///< a bundle identifier or a sample app's name
    std::string word{};                  ///< a section, a style, "on": one of a few words
    std::string control{};               ///< the id of something on a surface, or a switch's name
    std::optional<std::string> value{};  ///< what a control is set to
    std::optional<std::string> text{};   ///< a line of text, or a file's name
    std::optional<std::chrono::milliseconds> duration{};  ///< from 0 to ten years
    std::optional<std::int64_t> amount{};                 ///< percent, megabytes, seconds or a count
    std::optional<std::int64_t> icons{};                  ///< how many icons an app has
    std::optional<std::int64_t> icon{};                   ///< which of an app's icons, from 1
    std::optional<std::int64_t> width{};                  ///< points
    bool flag = false;                                    ///< with the option key; heavy; unnoticed

    bool operator==(const Step&) const = default;
};

/// Reads one line. A line that is blank or has only a comment contains no step. For a bad line, the error
/// says what is wrong.
[[nodiscard]] std::expected<std::optional<Step>, std::string> parse(std::string_view line);

/// Writes a step so that `parse` reads the same step again. This fails only for texts with control
/// characters.
[[nodiscard]] std::string print(const Step& step);

}  // namespace velko::script
