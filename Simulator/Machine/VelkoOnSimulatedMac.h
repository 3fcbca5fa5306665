#pragma once

#include <memory>
#include <utility>

#include "Simulator/Machine/SimulatedMac.h"
#include "Velko/App/AppController.h"
#include "Velko/App/AppInfo.h"
#include "Velko/App/Log.h"
#include "Velko/Ports/Desktop.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoCore/Layout/ManagedLayoutFile.h"
#include "VelkoEngine/Hiding/MenuBarEngine.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

/// What a Velko on a simulated Mac is made of, with the engine that talks to the Mac's framework. The Mac and
/// the log outlive it.
[[nodiscard]] inline AppController::Parts velkoOn(SimulatedMac& mac, Log& log, LayoutStore store,
                                                  AppInfo info, ManagedLayoutFile managed = {}) {
    return {.platform = mac.platform(),
            .ports = mac.appPorts(),
            .log = log,
            .store = std::move(store),
            .engine = std::make_unique<AssessmentEngine>(mac.platform()),
            .info = std::move(info),
            .managed = std::move(managed)};
}

}  // namespace velko
