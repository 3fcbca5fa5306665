#include "Scenarios/Model/LogLines.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Model/LogLines.h"

namespace velko::scenarios::model {

namespace {

using namespace std::chrono_literals;

/// A minute until an opening is given up, and what a slow engine takes to answer.
constexpr auto longestOpening = 75s;

// The permission, the system and the engine

void trustMissing(LogLine& line) {
    line.check.expected.isUntrusted = true;
    line.check.expected.asked.insert("Accessibility missing");
}

void trustGiven(LogLine& line) {
    line.check.expected.isUntrusted = false;
    line.check.expected.asked.insert("Accessibility granted");
}

void systemTold(LogLine& line) {
    line.check.expected.asked.insert(line.text);
}

/// Some reasons have no line of their own, or a line that comes after a refusal.
bool isReason(const LogLine& line, const std::string& reason) {
    const Expected& expected = line.check.expected;
    if (!line.check.takesTime() &&
        ((reason == "show me stopped" && expected.alone) || reason == "pop out off")) {
        return true;
    }
    return expected.asked.contains(reason) || reason == "inventory" || reason == "try again" ||
           reason == "autoTuck" || expected.out.isPresenting ||
           (reason == "show me done" && expected.alone && isAbout(line.at, expected.aloneUntil)) ||
           (reason == "peekEnded" && expected.openedAt && line.at - *expected.openedAt < longestOpening);
}

void applied(LogLine& line) {
    Expected& expected = line.check.expected;
    const std::string& reason = line.parts[0];
    line.check.require(isReason(line, reason), "a plan is applied for a reason", line.text);
    line.check.require(line.parts[2] == expected.planText(), "what is applied is what should show",
                       line.text + " instead of " + expected.planText());
    expected.asked.clear();
    expected.awaited.activity.reset();
    expected.isRefused = false;
    expected.isAllShown = false;
}

void refused(LogLine& line) {
    Expected& expected = line.check.expected;
    line.check.require(isReason(line, line.parts[0]), "a plan is applied for a reason", line.text);
    expected.asked.erase(line.parts[0]);  // what was asked for later is still to be answered
    expected.out = expected.out.isPresenting ? expected.out : Out();
    expected.isPinned = false;
    expected.awaited.activity.reset();
    expected.isRefused = true;
}

void started(LogLine& line) {
    const BundleID own = line.check.expected.own;
    line.check.expected = {.own = own, .startedAt = line.at};
}

constexpr auto systemRows = std::to_array<LineRow>({
    {"app", "Velko * starting on macOS *", started},
    {"app", "Accessibility not granted yet. Hiding nothing until it is.", trustMissing},
    {"app", "Accessibility taken away. Hiding nothing until it is granted again.", trustMissing},
    {"app", "Accessibility granted", trustGiven},
    {"engine", "applied (*) in * ms: *", applied},
    {"engine", "FAILED (*): *. Everything shown.", refused},
    {"engine", "UNAVAILABLE: *", [](LogLine& line) { line.check.expected.isEngineMissing = true; }},
    {"system", "*", systemTold},
});

}  // namespace

std::span<const LineRow> systemLines() {
    return systemRows;
}

namespace {

/// The parts of `text` that the stars of `pattern` stand for; nothing where it does not fit.
std::optional<std::vector<std::string>> partsOf(std::string_view text, std::string_view pattern) {
    std::vector<std::string> parts;
    while (true) {
        const auto star = pattern.find('*');
        if (!text.starts_with(pattern.substr(0, star))) {
            return std::nullopt;
        }
        if (star == std::string_view::npos) {
            return text.size() == pattern.size() ? std::optional(parts) : std::nullopt;
        }
        text.remove_prefix(star);
        pattern.remove_prefix(star + 1);
        const auto next = pattern.substr(0, pattern.find('*'));
        const auto end = pattern.empty() ? text.size() : text.find(next);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

/// The model knows every line of these categories.
constexpr std::array<std::string_view, 11> closedCategories{
    "inbox",    "inventory", "liveactivity", "note", "popout", "reveal",
    "settings", "showme",    "autopilot",    "keys", "managed"};

}  // namespace

void follow(StepCheck& check, const Happening& happening) {
    for (const auto rows : {iconLines(), layoutLines(), questionLines(), systemLines()}) {
        for (const LineRow& row : rows) {
            auto parts =
                row.category == happening.category ? partsOf(happening.text, row.pattern) : std::nullopt;
            if (parts) {
                check.require(row.by != By::user || !check.leavesVelkoAlone(), "the user alone decides",
                              happening.text);
                LogLine line{check, happening.at, happening.text, *std::move(parts)};
                row.follow(line);
                return;
            }
        }
    }
    check.require(std::ranges::count(closedCategories, happening.category) == 0,
                  "the log says nothing unheard of", "[" + happening.category + "] " + happening.text);
}

}  // namespace velko::scenarios::model
