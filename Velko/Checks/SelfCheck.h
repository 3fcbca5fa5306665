#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Velko/Checks/Notes.h"
#include "Velko/Checks/Subject.h"
#include "VelkoCore/Identifiers.h"

/// Finds out on a real Mac what Velko needs to know of it. Nothing prompts, opens or changes anything unless
/// its option was given. Main thread.
namespace velko::SelfCheck {

/// What a person may add to the check.
enum class Option { none, tryHiding, windows, watch, clicks };

/// What the command line asks for.
struct Command {
    enum class Kind {
        runApp,
        check,  ///< --self-check
        dump,   ///< --self-check --dump PID: one app's Accessibility tree
        hide,   ///< --self-check --hide: how `tryHiding` starts a second process
        usage,  ///< --self-check with anything else
    };
    Kind kind = Kind::runApp;
    ProcessID pid = 0;                 ///< with `dump`
    std::set<Option> options{};        ///< with `check`
    std::filesystem::path jsonFile{};  ///< with `check`; empty: none
    std::filesystem::path pictures{};  ///< with `check`: the folder for pictures; empty: none
    std::string only{};                ///< with `check`: the one section that runs; empty: all

    bool operator==(const Command&) const = default;
};
[[nodiscard]] Command parse(const std::vector<std::string>& arguments);
[[nodiscard]] std::string usage();

/// One part of the check.
struct Section {
    std::string_view name;
    Option needs = Option::none;
    bool isLeftAlone = false;  ///< the system may delay its timers
    void (*run)(const Subject&, Notes&) = nullptr;
};
[[nodiscard]] std::span<const Section> sections() noexcept;

/// Runs the sections that the command asks for, says each line at once, and writes the file if one is wanted.
/// Without options it takes a few seconds. Returns the exit status: 0, or 1 if something failed.
[[nodiscard]] int run(const Subject& subject, const Command& command,
                      const std::function<void(const std::string&)>& say);

/// An app's Accessibility tree as text, for `dump`.
[[nodiscard]] std::string dump(const Platform& platform, ProcessID pid);

}  // namespace velko::SelfCheck
