#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedHotKeys.h"
#include "Simulator/Desktop/SimulatedSurfaces.h"
#include "Simulator/Files/LibplistReader.h"
#include "Simulator/ForwardingPorts.h"
#include "Simulator/Machine/SimulatedMac.h"
#include "Simulator/MenuBar/SimulatedFramework.h"
#include "Simulator/MenuBar/SimulatedStatusItem.h"
#include "Velko/Checks/LayoutAudit.h"
#include "Velko/Checks/SelfCheck.h"
#include "Velko/View/Tree.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/Ports/Platform.h"
#include "tests/TemporaryFolder.h"

namespace velko {

/// A framework that can forget to hide, or to stop hiding.
class StubbornFramework final : public ForwardingFramework {
 public:
    using ForwardingFramework::ForwardingFramework;

    bool hidesNothing = false;
    bool neverEnds = false;

    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& className, const std::vector<int>& systemItems,
        const std::vector<BundleID>& bundleIDs) override {
        const std::vector<BundleID> everybody{"app.velko.mac", "com.example.mail", "com.example.chat"};
        return ForwardingFramework::makeConfiguration(className, systemItems,
                                                      hidesNothing ? everybody : bundleIDs);
    }
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) override {
        kept_.push_back(assertion);
        return neverEnds ? std::expected<void, RaisedException>()
                         : ForwardingFramework::invalidate(assertion);
    }

 private:
    std::vector<ObjectRef> kept_;
};

/// Answers hit tests with an element of a process that has nothing to do with them.
class StrayAccessibility final : public ForwardingAccessibility {
 public:
    using ForwardingAccessibility::ForwardingAccessibility;

    std::optional<ProcessID> stray;

    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point point, Uptime timeout) const override {
        return stray ? std::expected<AXElement, AXError>(application(*stray, timeout))
                     : ForwardingAccessibility::elementAt(point, timeout);
    }
};

/// The second process: what it holds ends with it, unless the system forgets to end it.
class SimulatedBench final : public SelfCheck::Bench {
 public:
    explicit SimulatedBench(SimulatedMac& mac) : mac_(mac) {}

    bool starts = true;
    bool outlivesItself = false;

    [[nodiscard]] bool startHider() override {
        if (starts) {
            isAlive_ = true;
            VKAssessment::activate(mac_.platform(), {1}, {"app.velko.mac"},
                                   [this](VKAssessment::Activation activation) {
                                       if (isAlive_) {
                                           assertion_ = std::move(activation.assertion);
                                       }
                                   });
        }
        return starts;
    }
    [[nodiscard]] StatusItem& statusItem() override { return mac_.statusItem; }
    [[nodiscard]] std::optional<Rect> statusItemWindow() const override { return std::nullopt; }
    void closeMenu() override {
        if (--menusThatStay < 0) {
            mac_.statusItem.closeMenu();
        }
    }
    int menusThatStay = 0;  ///< so often the menu is not closed
    void removeStatusItem() override { ++removals; }
    [[nodiscard]] std::optional<std::vector<LayoutAudit::Measured>> drawTree(
        const view::Node& tree, bool isDark, const std::filesystem::path& picture) override {
        drawn.push_back(picture.filename().string());
        return draw ? draw(tree, isDark) : boxesOf(tree);
    }
    /// A renderer that puts everything below each other.
    static std::vector<LayoutAudit::Measured> boxesOf(const view::Node& tree) {
        std::vector<LayoutAudit::Measured> boxes{
            {.id = "window", .frame = {.x = 0, .y = 0, .width = 400, .height = 100'000}}};
        view::walk(tree, [&](const view::Node& node) {
            const double top = 30.0 * static_cast<double>(boxes.size());
            boxes.push_back({.id = node.id,
                             .parent = 0,
                             .frame = {.x = 10, .y = top, .width = 300, .height = 20},
                             .needed = {.width = 300, .height = 0}});
        });
        return boxes;
    }
    [[nodiscard]] bool hasSymbol(const std::string& name) const override { return name != unknownSymbol; }
    [[nodiscard]] Surfaces& surfaces() override { return mac_.surfaces; }
    [[nodiscard]] std::vector<std::string> openWindows() const override { return {"a window"}; }
    std::function<std::optional<std::vector<LayoutAudit::Measured>>(const view::Node&, bool)> draw;
    std::vector<std::string> drawn;  ///< the names of the pictures, empty ones too
    std::string unknownSymbol;

    [[nodiscard]] std::optional<ToolRun> runTool(std::vector<std::string> arguments) override {
        return arguments.at(1) == "--verify" ? verified : ToolRun{.status = 0, .output = identifier};
    }
    int removals = 0;
    std::optional<ToolRun> verified = ToolRun{};
    std::string identifier = "Identifier=app.velko.mac\n";

    void killHider() override {
        isAlive_ = false;
        if (!outlivesItself) {
            assertion_ = nullptr;
        }
    }

 private:
    SimulatedMac& mac_;
    bool isAlive_ = false;
    PrivateFramework::ObjectRef assertion_;
};

/// The self-check on a simulated Mac with two apps that have icons.
class SelfCheckOnMac : public testing::Test {
 protected:
    using Command = SelfCheck::Command;
    using Option = SelfCheck::Option;
    using Lines = std::vector<std::string>;

    SelfCheckOnMac() {
        mac.launch({.bundleID = "com.example.mail", .name = "Mail", .icons = {{.title = "3"}}});
        chat = mac.launch({.bundleID = "com.example.chat", .name = "Chat", .icons = {{}, {}}});
        mac.advance(std::chrono::seconds(1));
    }

    SelfCheck::Subject subject() {
        const Platform real = mac.platform();
        return {.platform = {.mainThread = real.mainThread,
                             .accessibility = accessibility,
                             .workspace = real.workspace,
                             .displays = real.displays,
                             .pointer = real.pointer,
                             .processes = real.processes,
                             .windows = real.windows,
                             .privateFramework = framework,
                             .activity = real.activity},
                .propertyLists = reader,
                .hotKeys = mac.hotKeys,
                .info = {.version = "1.2"},
                .layoutFile = folder.path() / "not" / "there" / "yet" / "layout.json",
                .logFile = logFile,
                .pass = [this](MainThread::Uptime duration) { mac.advance(duration); },
                .bench = &bench};
    }

    /// Runs the check, and returns the lines that say FAIL.
    Lines failures(const std::set<Option>& options = {}, const std::string& only = "") {
        lines.clear();
        const int status = SelfCheck::run(subject(),
                                          {.kind = Command::Kind::check,
                                           .options = options,
                                           .jsonFile = jsonFile,
                                           .pictures = pictures,
                                           .only = only},
                                          [this](const std::string& line) {
                                              lines.push_back(line);
                                              if (person && line.starts_with(">> ")) {
                                                  person(line);
                                              }
                                          });
        Lines failed;
        std::ranges::copy_if(lines, std::back_inserter(failed),
                             [](const std::string& line) { return line.starts_with("FAIL "); });
        EXPECT_EQ(status, failed.empty() ? 0 : 1);
        return failed;
    }
    Lines failuresOfHiding() { return failures({Option::tryHiding}, "hiding"); }

    [[nodiscard]] bool says(const std::string& words) const {
        return std::ranges::any_of(
            lines, [&](const std::string& line) { return line.find(words) != std::string::npos; });
    }
    [[nodiscard]] std::string all() const {
        std::string text;
        for (const std::string& line : lines) {
            text += line + "\n";
        }
        return text;
    }
    void expectEverythingShows() {
        EXPECT_EQ(mac.visibleIcons().size(), 4U);
        EXPECT_EQ(mac.framework.activeAssertions(), 0U);
    }

    SimulatedMac mac;
    StubbornFramework framework{mac.framework};
    StrayAccessibility accessibility{mac.accessibility};
    SimulatedBench bench{mac};
    LibplistReader reader;
    TemporaryFolder folder;
    std::filesystem::path logFile = folder.path() / "Velko.log";
    std::filesystem::path jsonFile;
    std::filesystem::path pictures;
    ProcessID chat = 0;
    Lines lines;
    std::function<void(const std::string& request)> person;  ///< does what is asked for
};

}  // namespace velko
