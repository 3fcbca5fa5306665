#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Velko/Checks/RenderingCheck.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Import/PropertyList.h"
#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Platform.h"

/// Tries everything that Velko needs of a Mac once, without changing anything. Main thread.
namespace velko::SelfCheck {

/// What the command line asks for.
struct Command {
    enum class Kind {
        runApp,
        check,  ///< --self-check
        dump,   ///< --self-check --dump PID: one app's Accessibility tree
        usage,  ///< --self-check with anything else
    };
    Kind kind = Kind::runApp;
    ProcessID pid = 0;  ///< with `dump`

    bool operator==(const Command&) const = default;
};
[[nodiscard]] Command parse(const std::vector<std::string>& arguments);
inline constexpr auto usage = "usage: Velko --self-check [--dump PID]";

/// What is tried.
struct Subject {
    Platform platform;
    const PropertyListReader& propertyLists;
    std::filesystem::path layoutFile;
    std::filesystem::path logFile;
    Contracts::Pass pass;
    RenderingCheck::Draw draw{};  ///< absent: nothing is drawn
};

/// The contracts of the ports, and beyond them what the running system has to offer. Takes a few seconds.
[[nodiscard]] Contracts::Checks run(const Subject& subject);

/// One line per check, "OK  " or "FAIL", its name and what was seen; then the count.
[[nodiscard]] std::string report(const Contracts::Checks& checks);

[[nodiscard]] bool passed(const Contracts::Checks& checks);

/// An app's Accessibility tree as text, for `dump`.
[[nodiscard]] std::string dump(const Platform& platform, ProcessID pid);

}  // namespace velko::SelfCheck
