#pragma once

#include <set>
#include <string>

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

class AutopilotOffers;

/// Whether Velko has something to ask, and whether the user has put it off. Main thread; owned by the
/// controller.
class NoteDeferral final : private NonCopyable {
 public:
    NoteDeferral(FlowHost& host, AutopilotOffers& offers) : host_(host), offers_(offers) {}

    /// Whether icons wait for an answer, or an offer is open.
    [[nodiscard]] bool isAnythingToAsk() const;

    /// The note was closed, however that happened: what is left is put off.
    void noteClosed();

    /// Something new is to be asked, which was not put off.
    void askAgain();

    /// The autopilot has looked for suggestions. An offer is new, and so is a suggestion that was not
    /// there when the note closed.
    void suggestionsChecked(bool offered);

 private:
    /// The suggestions without their figures, which change from day to day.
    [[nodiscard]] std::set<std::string> suggestedNow() const;

    FlowHost& host_;
    AutopilotOffers& offers_;
    std::set<std::string> putOff_;
};

}  // namespace velko
