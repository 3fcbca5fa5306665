#include "Simulator/Desktop/SimulatedCommandDoor.h"

#include <utility>

namespace velko {

std::expected<void, std::string> SimulatedCommandDoor::open(Handlers handlers) {
    if (refusal) {
        return std::unexpected(*refusal);
    }
    handlers_ = std::move(handlers);
    return {};
}

void SimulatedCommandDoor::close() {
    handlers_.reset();
    for (const Caller caller : std::exchange(waiting_, {})) {
        if (outside && isFromOutside(caller)) {
            outside->hangUp(caller);
        }
    }
}

void SimulatedCommandDoor::send(Caller caller, const std::string& lines) {
    if (!waiting_.contains(caller)) {
        return;
    }
    if (outside && isFromOutside(caller)) {
        outside->send(caller, lines);
    } else {
        heard_[caller] += lines;
    }
}

void SimulatedCommandDoor::hangUp(Caller caller) {
    if (waiting_.erase(caller) > 0 && outside && isFromOutside(caller)) {
        outside->hangUp(caller);
    }
}

std::optional<CommandDoor::Caller> SimulatedCommandDoor::come(const std::string& line) {
    const Caller caller = newest_ ? *newest_ + 1 : firstOwn;
    if (!ask(caller, line)) {
        return std::nullopt;
    }
    newest_ = caller;
    return caller;
}

bool SimulatedCommandDoor::ask(Caller caller, const std::string& line) {
    if (!handlers_) {
        return false;
    }
    waiting_.insert(caller);
    const auto asked = handlers_->asked;
    asked(caller, line);
    return true;
}

void SimulatedCommandDoor::leave(Caller caller) {
    if (waiting_.erase(caller) > 0 && handlers_) {
        const auto left = handlers_->left;
        left(caller);
    }
}

}  // namespace velko
