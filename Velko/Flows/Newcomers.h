#pragma once

#include "Velko/Flows/FlowHost.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

class Log;
class NoteDeferral;

/// Gets to know the apps in the menu bar; new ones stay tucked until the user says where they go. Main
/// thread; owned by the controller.
class Newcomers final : private NonCopyable {
 public:
    Newcomers(FlowHost& host, const MainThread& clock, Log& log, NoteDeferral& note)
        : host_(host), clock_(clock), log_(log), note_(note) {}

    /// Takes what a scan found. Does not apply.
    void admit(const BundleIDs& present, const BundleID& ownBundleID);

 private:
    FlowHost& host_;
    const MainThread& clock_;
    Log& log_;
    NoteDeferral& note_;
};

}  // namespace velko
