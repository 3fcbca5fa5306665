#include <algorithm>
#include <array>
#include <deque>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <ranges>
#include <system_error>

#include "Playground/Html/Markup.h"
#include "Playground/Web/Picture.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Accessibility/SimulatedAccessibility.h"
#include "Simulator/Desktop/SimulatedDesktop.h"
#include "Simulator/Desktop/SimulatedProcesses.h"
#include "Simulator/Desktop/SimulatedWorkspace.h"
#include "Simulator/MenuBar/SimulatedMenuBar.h"
#include "Velko/App/AppController.h"

namespace velko::web {

namespace {

using html::element;
using html::textElement;

constexpr double tilePoints = 22;
constexpr std::size_t shownLines = 150;
constexpr std::size_t mostPlanned = 300;  ///< apps of a plan that are drawn; the others are only counted
constexpr std::uintmax_t longestFile = 1U << 20U;

/// What the desk knows about an app.
struct DeskApp {
    BundleID bundleID;
    std::string name;
    bool isRunning = false;
    bool isHidden = false;
    bool isHung = false;
    bool isBusy = false;
};

bool hasHiddenIcon(const SimulatedMac& mac, ProcessID pid) {
    return std::ranges::any_of(mac.menuBar().slots(),
                               [pid](const auto& slot) { return slot.pid == pid && !slot.isVisible; });
}

std::vector<DeskApp> deskApps(SimulatedMac& mac) {
    std::vector<DeskApp> apps;
    for (const auto& process : mac.processes.running()) {
        if (!process.app.isApplication || process.app.bundleID.empty() ||
            process.app.bundleID.starts_with("com.apple.") || process.pid == mac.processes.ownPID()) {
            continue;
        }
        apps.push_back({.bundleID = process.app.bundleID,
                        .name = process.app.name,
                        .isRunning = true,
                        .isHidden = hasHiddenIcon(mac, process.pid),
                        .isHung = mac.accessibility.isHung(process.pid),
                        .isBusy = process.cores > 0});
    }
    const auto addMissing = [&apps](const scenarios::SampleApp& sample) {
        if (std::ranges::find(apps, sample.bundleID, &DeskApp::bundleID) == apps.end()) {
            apps.push_back({.bundleID = sample.bundleID, .name = sample.name});
        }
    };
    std::ranges::for_each(scenarios::sampleApps(), addMissing);
    addMissing(scenarios::latecomer());
    std::ranges::sort(apps, {}, &DeskApp::name);
    return apps;
}

std::string chip(std::string_view text, std::string_view kind) {
    return textElement("span", {{"class", "chip " + std::string(kind)}}, text);
}

std::string appRow(const DeskApp& app, const AppController* velko) {
    std::string chips;
    if (!app.isRunning) {
        chips += chip("not running", "off");
    }
    if (app.isHung) {
        chips += chip("hangs", "warning");
    }
    if (app.isBusy) {
        chips += chip("heavy", "warning");
    }
    if (app.isRunning && velko != nullptr) {
        const auto& layout = velko->values().layout;
        const bool waits = layout.isWaiting(app.bundleID);
        const std::string section(name(layout.section(app.bundleID)));
        chips += waits ? chip("new", "accent") : chip(section, section);
    }
    return element(
        "label", {{"class", app.isHidden ? "desk-app hidden-icon" : "desk-app"}, {"data-key", app.bundleID}},
        html::voidElement("input", {{"type", "radio"},
                                    {"name", "desk-app"},
                                    {"value", app.bundleID},
                                    {.name = "data-mine"},
                                    {.name = "data-running", .isThere = app.isRunning},
                                    {.name = "data-hung", .isThere = app.isHung},
                                    {.name = "data-heavy", .isThere = app.isBusy}}) +
            html::appTile(app.bundleID, app.name, tilePoints) +
            textElement("span", {{"class", "desk-app-name"}}, app.name) +
            element("span", {{"class", "chips"}}, chips));
}

std::string row(std::string_view term, const std::string& markup) {
    return element("div", {}, textElement("dt", {}, term) + element("dd", {}, markup));
}

/// A line of the log, split into date, category and message. `key` is different for each line on the page.
std::string logRow(std::string_view line, const std::string& key) {
    const html::Attributes attributes{{"data-key", key}};
    const auto open = line.find("  [");
    const auto close = open == std::string_view::npos ? open : line.find("] ", open);
    if (close == std::string_view::npos) {
        return textElement("li", attributes, line);
    }
    const std::string_view category = line.substr(open + 3, close - open - 3);
    return element(
        "li", attributes,
        textElement("time", {}, line.substr(0, open)) + " " +
            textElement("b", {{"style", "--hue:" + std::to_string(html::hue(category))}}, category) + " " +
            textElement("span", {}, line.substr(close + 2)));
}

}  // namespace

std::string drawApps(Session& session) {
    std::string rows;
    for (const DeskApp& app : deskApps(session.mac())) {
        rows += appRow(app, session.world().velko());
    }
    return rows;
}

std::string drawLog(Session& session) {
    std::string rows;
    std::map<std::size_t, std::size_t> seen;  // how often each text has come
    for (const std::string_view line : session.world().log().newest(shownLines)) {
        const std::size_t text = std::hash<std::string_view>()(line);
        rows += logRow(line, std::to_string(text) + "-" + std::to_string(seen[text]++));
    }
    return element("ol", {{"class", "log"}, {"aria-label", "Log"}}, rows);
}

std::string drawPlan(Session& session) {
    const auto* velko = session.world().velko();
    if (velko == nullptr) {
        return textElement("p", {{"class", "secondary"}}, "Velko is not running. Every icon shows.");
    }
    const auto& values = velko->values();
    const auto& plan = velko->engine().current();
    const auto names = namesOn(session);
    std::string apps;
    if (const auto allowed = plan.allowed()) {
        for (const BundleID& bundleID : *allowed | std::views::take(mostPlanned)) {
            apps += element(
                "li", {{"title", bundleID}},
                html::appTile(bundleID, names(bundleID), 16) + textElement("span", {}, names(bundleID)));
        }
        if (allowed->size() > mostPlanned) {
            apps += textElement("li", {}, "and " + std::to_string(allowed->size() - mostPlanned) + " more");
        }
    }
    const auto cost = session.mac().cost();
    return element(
        "dl", {{"class", "plan"}},
        row("State", html::escaped(describe(values.state))) +
            row("Hidden apps", std::to_string(values.tidiedCount)) +
            row("Reveals", values.activeStyle == RevealStyle::shelf ? "in a shelf" : "in the bar") +
            row("Plan in force",
                plan.isShowAll() ? "show all" : element("ul", {{"class", "plan-apps"}}, apps)) +
            row("It has cost", std::to_string(cost.wakeUps) + " wake-ups, " +
                                   std::to_string(cost.accessibilityMessages) + " messages, " +
                                   std::to_string(cost.engineCalls) + " engine calls"));
}

std::string drawLayoutFile(Session& session) {
    const auto file = session.world().layoutFile();
    std::error_code error;
    if (const auto size = std::filesystem::file_size(file, error); error || size > longestFile) {
        return textElement("p", {{"class", "secondary"}},
                           error ? "There is no file yet." : "It is too long to show.");
    }
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    return textElement("pre", {}, text);
}

std::string drawElsewhere(Session& session) {
    const SimulatedMac& mac = session.mac();
    std::string rows;
    const auto add = [&rows](const std::string& what, const std::string& about) {
        rows += element("li", {}, textElement("b", {}, what) + " " + textElement("span", {}, about));
    };
    if (const auto& urls = mac.workspace.openedURLs(); !urls.empty()) {
        add("Opened", urls.back());
    }
    if (const auto& files = mac.application.openedFiles; !files.empty()) {
        const auto& application = files.back().application;
        add(application ? application->stem().string() + " opened" : "Opened",
            files.back().file.filename().string());
    }
    if (const auto& text = mac.pasteboard.content; !text.empty()) {
        add("Copied", std::to_string(text.size()) + " bytes of text");
    }
    if (mac.updater.checks > 0) {
        add("Looked for updates", std::to_string(mac.updater.checks) + " times");
    }
    return rows.empty() ? "" : element("ul", {{"class", "elsewhere"}}, rows);
}

}  // namespace velko::web
