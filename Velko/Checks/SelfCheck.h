#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Velko/View/Node.h"
#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/Import/PropertyList.h"
#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Platform.h"

/// Checks that a renderer does what the controllers rely on. Nothing becomes visible. Main thread.
namespace velko::RenderingCheck {

/// The view that a renderer has made for a node.
struct DrawnView {
    std::string id;
    std::string words;           ///< what VoiceOver says of it
    Size size;                   ///< points
    const void* view = nullptr;  ///< stays the same as long as it is the same view
};

/// Draws a tree in place of the one before, and returns the views of all nodes that have an id.
using Draw = std::function<std::vector<DrawnView>(const view::Node&)>;

/// Draws a tree with a control of every kind, and then the same controls in another order.
void check(const Draw& draw, Contracts::Checks& checks);

}  // namespace velko::RenderingCheck

/// Tries once everything that Velko needs of a Mac, and changes nothing. Main thread.
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

/// What the check works on.
struct Subject {
    Platform platform;
    const PropertyListReader& propertyLists;
    std::filesystem::path layoutFile;
    std::filesystem::path logFile;
    Contracts::Pass pass;
    RenderingCheck::Draw draw{};  ///< absent: nothing is drawn
};

/// Checks the contracts of the ports, and then what the running system offers. Takes a few seconds.
[[nodiscard]] Contracts::Checks run(const Subject& subject);

/// One line for each check: "OK  " or "FAIL", its name, and what was seen. The last line counts them.
[[nodiscard]] std::string report(const Contracts::Checks& checks);

[[nodiscard]] bool passed(const Contracts::Checks& checks);

/// An app's Accessibility tree as text, for `dump`.
[[nodiscard]] std::string dump(const Platform& platform, ProcessID pid);

}  // namespace velko::SelfCheck
