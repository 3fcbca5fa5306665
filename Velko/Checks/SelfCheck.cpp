#include "Velko/Checks/SelfCheck.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "Velko/View/Node.h"
#include "Velko/View/Tree.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/MenuBar/Inventory.h"
#include "VelkoEngine/MenuBar/InventoryDump.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Opening/ItemOpener.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko::RenderingCheck {

namespace {

using Contracts::expect;
using view::Node;

std::vector<Node> controls() {
    const std::vector<std::string> options{"One", "Two"};
    return {
        view::button("button", {.title = "Button"}),
        {.id = "symbol", .label = "Settings", .content = view::Button{.symbol = "gearshape"}},
        {.id = "toggle", .content = view::Toggle{.title = "Toggle", .isOn = true}},
        {.id = "pop-up", .content = view::Picker{.title = "Pop-up", .options = options}},
        {.id = "segments",
         .content =
             view::Picker{.title = "Segments", .options = options, .style = view::Picker::Style::segmented}},
        {.id = "menu", .content = view::MenuButton{.title = "Menu"}},
        {.id = "tile", .content = view::Tile{.bundleID = "com.apple.finder", .name = "Finder"}},
        {.id = "pages",
         .label = "Pages",
         .content = view::Pages{.tabs = {{.title = "A"}, {.title = "B"}}, .children = {}}},
    };
}

constexpr double height = 800;  // more than the tree needs

/// The controls, inside a node of every kind that is no control.
Node tree(std::vector<Node> children) {
    const std::string words = "Words that are long enough to need more than the one line that they start on.";
    Node scroll{.id = "scroll",
                .content = view::Scroll{.height = 60, .children = {view::text("scrolled", words)}}};
    Node group{.id = "group", .content = view::Group{.title = "Group", .children = std::move(children)}};
    Node divider{.id = "divider", .content = view::Divider{}};
    Node row =
        view::row("row", {view::text("left", words), view::spacer("gap"), view::text("right", "Right")});
    Node root =
        view::column("tree", {std::move(scroll), std::move(divider), std::move(group), std::move(row)});
    root.width = 320;
    root.minHeight = height;
    return root;
}

const DrawnView* find(const std::vector<DrawnView>& views, const std::string& id) {
    const auto found = std::ranges::find(views, id, &DrawnView::id);
    return found == views.end() ? nullptr : &*found;
}

/// The ids of the nodes for which `isWrong` holds or which have no view.
template <class Wrong>
std::string idsOf(const std::vector<Node>& nodes, const std::vector<DrawnView>& views, const Wrong& isWrong) {
    std::string ids;
    for (const Node& node : nodes) {
        const DrawnView* view = find(views, node.id);
        if (view == nullptr || isWrong(node, *view)) {
            ids += (ids.empty() ? "" : ", ") + node.id;
        }
    }
    return ids;
}

}  // namespace

void check(const Draw& draw, Contracts::Checks& checks) {
    std::vector<Node> nodes = controls();
    const std::vector<DrawnView> first = draw(tree(nodes));
    const std::string unseen = idsOf(nodes, first, [](const Node&, const DrawnView& view) {
        return view.size.width < 1 || view.size.height < 1;
    });
    expect(checks, "windows: every control has room", unseen.empty(), unseen);
    const std::string silent = idsOf(nodes, first, [](const Node& node, const DrawnView& view) {
        return view.words != view::spoken(node);
    });
    expect(checks, "windows: VoiceOver knows every control", silent.empty(), silent);

    const DrawnView* whole = find(first, "tree");
    expect(checks, "windows: what has a least height has it",
           whole != nullptr && whole->size.height >= height);

    std::ranges::reverse(nodes);
    const std::vector<DrawnView> second = draw(tree(nodes));
    const std::string renewed = idsOf(nodes, second, [&](const Node& node, const DrawnView& view) {
        const DrawnView* before = find(first, node.id);
        return before == nullptr || before->view != view.view;
    });
    expect(checks, "windows: a control that moves stays itself", renewed.empty(), renewed);

    const std::vector<DrawnView> third =
        draw(tree({{.id = "button", .content = view::Picker{.options = {"One"}}}}));
    const DrawnView* before = find(second, "button");
    const DrawnView* after = find(third, "button");
    expect(checks, "windows: a control of another kind is another one",
           before != nullptr && after != nullptr && before->view != after->view);
    expect(checks, "windows: what is gone is gone", find(third, "tile") == nullptr);
}

}  // namespace velko::RenderingCheck

namespace velko::SelfCheck {

namespace {

using Contracts::Checks;
using Contracts::expect;
using namespace std::chrono_literals;

constexpr int dumpDepth = 8;

std::string wholeNumber(double value) {
    return std::to_string(static_cast<long>(value));
}

void checkScreens(const Platform& platform, Checks& checks) {
    std::string seen;
    for (const Display& display : platform.displays.displays()) {
        seen += (seen.empty() ? "" : ", ") + wholeNumber(display.frame.width) + "x" +
                wholeNumber(display.frame.height) + (MenuBarStrip::housing(display) ? " with a notch" : "");
    }
    expect(checks, "screens are listed", !seen.empty(), seen);
}

/// A Mac without the permission may be in order all the same, so its absence is no failure.
void checkTrustAndItems(const Subject& subject, Checks& checks) {
    const Platform& platform = subject.platform;
    const bool isTrusted = AX::isTrusted(platform);
    expect(checks, "the Accessibility permission can be asked about", true,
           isTrusted ? "given" : "not given");
    const std::size_t apps = Inventory::runningApps(platform).size();
    expect(checks, "regular apps are running", apps > 0, std::to_string(apps));

    std::optional<std::vector<MenuBarItem>> items;
    const Task reading =
        Inventory::items(platform, {}, [&](Inventory::Found found) { items = std::move(found.items); });
    for (int turn = 0; turn < 20 && !items; ++turn) {
        subject.pass(500ms);
    }
    expect(checks, "the menu bar's items are read", items.has_value(),
           std::to_string(items.value_or(std::vector<MenuBarItem>{}).size()) + " items");
    expect(checks, "the menu bar's host answers", !isTrusted || !Inventory::visiblePIDs(platform).empty(),
           isTrusted ? std::to_string(Inventory::visiblePIDs(platform).size()) + " owners" : "not asked");
}

void checkFramework(const Platform& platform, Checks& checks) {
    const VKAssessment::ProbeReport report = VKAssessment::probeReport(platform);
    std::string there = "there are";
    for (const auto& [className, methods] : report.classes) {
        there += " " + className;
    }
    for (const VKAssessment::Check& check : report.checks) {
        expect(checks, "hiding: " + check.name, check.ok, check.ok ? "" : report.loadError.value_or(there));
    }
}

void checkPropertyLists(const PropertyListReader& reader, Checks& checks) {
    constexpr std::string_view text =
        R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>Hide</key><array><string>Caf&#233;</string><data>AQI=</data></array>
<key>ShowOnHover</key><true/>
<key>Interval</key><real>6.5</real>
<key>Count</key><integer>-7</integer>
<key>Seen</key><date>2026-03-01T09:30:00Z</date>
</dict></plist>)";
    const PropertyList::Dictionary wanted{
        {"Hide",
         {PropertyList::Array{{std::string("Café")}, {PropertyList::Data{std::byte{1}, std::byte{2}}}}}},
        {"ShowOnHover", {true}},
        {"Interval", {6.5}},
        {"Count", {std::int64_t{-7}}},
        {"Seen", {Date(std::chrono::sys_days(2026y / 3 / 1) + 9h + 30min)}},
    };
    const auto read = readPropertyList(std::as_bytes(std::span(text)), reader);
    expect(checks, "a property list is read", read == PropertyList{wanted},
           read ? "" : "error " + std::to_string(static_cast<int>(read.error())));
}

/// Whether Velko may make files in the folder, or in the nearest folder above it that exists.
void checkFolder(const char* name, const std::filesystem::path& file, Checks& checks) {
    std::error_code error;
    std::filesystem::path folder = file.parent_path();
    while (folder.has_relative_path() && !std::filesystem::exists(folder, error)) {
        folder = folder.parent_path();
    }
    const bool isWritable =
        std::filesystem::is_directory(folder, error) && ::access(folder.c_str(), W_OK | X_OK) == 0;
    expect(checks, name, file.is_absolute() && isWritable, folder.string());
}

std::optional<ProcessID> processID(std::string_view text) {
    ProcessID pid = 0;
    const char* const end = std::to_address(text.end());
    const auto [stop, error] = std::from_chars(std::to_address(text.begin()), end, pid);
    return error == std::errc{} && stop == end && pid > 0 ? std::optional(pid) : std::nullopt;
}

}  // namespace

Command parse(const std::vector<std::string>& arguments) {
    // The system adds arguments of its own when it opens an app.
    if (arguments.empty() || arguments.front() != "--self-check") {
        return {.kind = Command::Kind::runApp};
    }
    if (arguments.size() == 1) {
        return {.kind = Command::Kind::check};
    }
    const auto pid =
        arguments.size() == 3 && arguments[1] == "--dump" ? processID(arguments[2]) : std::nullopt;
    return pid ? Command{.kind = Command::Kind::dump, .pid = *pid} : Command{.kind = Command::Kind::usage};
}

Checks run(const Subject& subject) {
    const Platform& platform = subject.platform;
    Checks checks;
    // This comes first: while it runs the main loop, the system also tells us of the other apps.
    Contracts::checkMainThread(platform.mainThread, subject.pass, checks);
    Contracts::checkDisplays(platform.displays, checks);
    checkScreens(platform, checks);
    Contracts::checkProcesses(platform.processes, checks);
    Contracts::checkWorkspace(platform, checks);
    Contracts::checkWindows(platform.windows, checks);
    Contracts::checkPointer(platform, checks);
    expect(checks, "open menus can be asked about", true,
           isAnyMenuOpen(platform) ? "one is open" : "none is open");
    Contracts::checkAccessibility(platform, checks);
    checkTrustAndItems(subject, checks);
    Contracts::checkPrivateFramework(platform.privateFramework, VKAssessment::frameworkPath,
                                     VKAssessment::configurationClass, checks);
    checkFramework(platform, checks);
    checkPropertyLists(subject.propertyLists, checks);
    if (subject.draw) {
        RenderingCheck::check(subject.draw, checks);
    }
    checkFolder("the layout's folder is writable", subject.layoutFile, checks);
    checkFolder("the log's folder is writable", subject.logFile, checks);
    return checks;
}

std::string report(const Checks& checks) {
    std::string text;
    std::size_t failed = 0;
    for (const Contracts::Check& check : checks) {
        failed += check.passed ? 0 : 1;
        text += (check.passed ? "OK   " : "FAIL ") + check.name;
        text += (check.seen.empty() ? "" : ": " + check.seen) + "\n";
    }
    return text + std::to_string(checks.size() - failed) + " passed, " + std::to_string(failed) + " failed\n";
}

bool passed(const Checks& checks) {
    return std::ranges::all_of(checks, &Contracts::Check::passed);
}

std::string dump(const Platform& platform, ProcessID pid) {
    return Inventory::axDump(platform, pid, dumpDepth);
}

}  // namespace velko::SelfCheck
