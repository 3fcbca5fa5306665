#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

struct SimulatedElement;
using SimulatedElementRef = std::shared_ptr<SimulatedElement>;

/// What an element answers when it is asked for an attribute: an error or a value.
using SimulatedAnswer = std::variant<AXError, AXOther, bool, double, std::string, Point, Size,
                                     SimulatedElementRef, std::vector<SimulatedElementRef>>;
using SimulatedAnswers = std::map<std::string, SimulatedAnswer>;

/// One element of an Accessibility tree. It exists for as long as its tree holds it; a handle of one that
/// is gone answers `invalidElement`.
struct SimulatedElement {
    ProcessID pid = 0;              ///< the process that answers for it
    SimulatedAnswers attributes{};  ///< what the machine says; it keeps them up to date
    SimulatedAnswers overrides{};   ///< what this element says instead; the machine leaves them alone
    std::map<std::string, std::function<void()>> actions{};  ///< what it can do
    MainThread::Uptime delay{0};  ///< how much longer than usual it takes over each answer
};

}  // namespace velko
