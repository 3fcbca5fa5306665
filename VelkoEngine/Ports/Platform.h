#pragma once

namespace velko {

class Accessibility;
class Activity;
class Displays;
class MainThread;
class Pointer;
class PrivateFramework;
class Processes;
class Windows;
class Workspace;

/// The machine that Velko runs on: one reference per port, handed over once, outliving everything.
struct Platform {
    MainThread& mainThread;
    Accessibility& accessibility;
    Workspace& workspace;
    Displays& displays;
    Pointer& pointer;
    Processes& processes;
    Windows& windows;
    PrivateFramework& privateFramework;
    Activity& activity;
};

}  // namespace velko
