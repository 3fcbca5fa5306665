#include <gtest/gtest.h>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Accessibility/SimulatedElement.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/InventoryDump.h"
#include "VelkoEngine/Ports/Platform.h"

namespace velko {
namespace {

using Elements = std::vector<SimulatedElementRef>;

/// Elements within each other, titled "1" and so on from the outermost.
SimulatedElementRef nest(ProcessID pid, const char* role, int levels, int title = 1) {
    SimulatedAnswers attributes{{"AXRole", role}, {"AXTitle", std::to_string(title)}};
    if (title < levels) {
        attributes["AXChildren"] = Elements{nest(pid, role, levels, title + 1)};
    }
    return std::make_shared<SimulatedElement>(
        SimulatedElement{.pid = pid, .attributes = std::move(attributes)});
}

TEST(InventoryDump, WritesAnAppsTreeAndWhatHangsOnItBesides) {
    SimulatedMac mac;
    const auto pid = mac.launch({.bundleID = "a", .name = "App", .icons = {{.identifier = "id"}}});
    mac.iconElement(pid, 0)->overrides = {{"AXPosition", Point{-3.9, -0.5}}, {"AXSize", Size{1e10, 24.9}}};
    mac.accessibility.root(pid)->overrides = {{"AXChildren", Elements{nest(pid, "AXGroup", 4)}},
                                              {"AXMainWindow", nest(pid, "AXWindow", 3)},
                                              {"AXFocusedWindow", AXError::noValue}};
    EXPECT_EQ(Inventory::axDump(mac.platform(), pid, 3),
              "AXApplication \"App\"\n"
              "  AXGroup \"1\"\n"
              "    AXGroup \"2\"\n"
              "      AXGroup \"3\"\n"
              "  [AXExtrasMenuBar]\n"
              "    AXMenuBar \"\"\n"
              "      AXMenuBarItem/AXMenuExtra id=id \"id\" @-3,0 10000000000x24\n"
              "  [AXMainWindow]\n"
              "    AXWindow \"1\"\n"
              "      AXWindow \"2\"\n"
              "  attributes: AXChildren, AXExtrasMenuBar, AXFocusedWindow, AXMainWindow, AXRole, AXTitle\n");
    mac.quit(pid);
    EXPECT_EQ(Inventory::axDump(mac.platform(), pid, 3), "? \"\"\n  attributes: \n");
}

TEST(InventoryDump, WritesTheHostsTreeWithTheProcessesBehindIt) {
    SimulatedMac mac;
    const auto host = mac.menuBarHost();
    const auto other = mac.launch({.bundleID = "a", .name = "Other"});
    mac.accessibility.root(host)->overrides["AXChildren"] =
        Elements{nest(host, "AXGroup", 6), nest(other, "AXApplication", 2),
                 nest(mac.processes.ownPID(), "AXApplication", 2)};
    std::string tree;
    const Task reading = mac.mainThread.background(
        [platform = mac.platform()] { return Inventory::menuBarAgentDump(platform); },
        [&](std::string dump) { tree = std::move(dump); });
    mac.advance(std::chrono::seconds(1));
    EXPECT_EQ(mac.accessibility.ownAnswersElsewhere(), 0U);
    EXPECT_EQ(tree, "MenuBarAgent pid " + std::to_string(host) +
                        "\n"
                        "AXApplication \"MenuBarAgent\"\n"
                        "  AXGroup \"1\"\n"
                        "    AXGroup \"2\"\n"
                        "      AXGroup \"3\"\n"
                        "        AXGroup \"4\"\n"
                        "          AXGroup \"5\"\n"
                        "  AXApplication \"1\" pid=" +
                        std::to_string(other) + "\n  ? \"\" pid=" + std::to_string(mac.processes.ownPID()) +
                        "\n");
    mac.quit(host);
    EXPECT_EQ(Inventory::menuBarAgentDump(mac.platform()), "MenuBarAgent process not found");
}

}  // namespace
}  // namespace velko
