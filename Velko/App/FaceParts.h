#pragma once

#include "Velko/Ports/AppPorts.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {

class AppController;
class Log;

/// What the controller of a surface is made of. All of it outlives the surface.
struct FaceParts {
    AppController& controller;
    Platform platform;
    AppPorts ports;
    Log& log;
};

}  // namespace velko
