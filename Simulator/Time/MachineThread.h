#pragma once

#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// A main thread that a simulated machine can run on: it says how that machine's own time passes.
class MachineThread : public MainThread {
 public:
    /// Time that the running code waits for somebody's answer.
    virtual void spend(Uptime cost) = 0;

    /// Something that the machine does, not Velko, after `delay`.
    virtual void happen(Uptime delay, Work work) = 0;
};

}  // namespace velko
