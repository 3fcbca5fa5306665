#include "Simulator/Machine/SimulatedApp.h"

#include <utility>

namespace velko {

namespace {

SimulatedIcon systemItem(int number, std::string title, double width) {
    return {.title = std::move(title),
            .identifier = "com.apple.menuextra." + std::to_string(number),
            .width = width,
            .systemItem = number};
}

}  // namespace

SimulatedApp SimulatedApp::menuBarAgent() {
    return {.bundleID = "com.apple.MenuBarAgent",
            .name = SimulatedApp::menuBarHostName,
            .icons = {systemItem(SimulatedApp::clockItem, "Clock", 140), systemItem(1, "Control Center", 32),
                      systemItem(2, "Wi-Fi", 32)},
            .bundlePath = "/System/Library/CoreServices/MenuBarAgent.app"};
}

SimulatedApp SimulatedApp::systemUIServer() {
    return {.bundleID = "com.apple.systemuiserver",
            .name = "SystemUIServer",
            .icons = {systemItem(3, "VPN", 32)},
            .bundlePath = "/System/Library/CoreServices/SystemUIServer.app"};
}

SimulatedApp SimulatedApp::velkoItself() {
    return {.bundleID = "app.velko.mac", .name = "Velko", .icons = {{.title = "Velko", .width = 28}}};
}

}  // namespace velko
