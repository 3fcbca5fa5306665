#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Model/StepCheck.h"

namespace velko::scenarios::model {

/// A line of the log, and the parts that stand for the stars of its pattern.
struct LogLine {
    StepCheck& check;
    MainThread::Uptime at;
    std::string text;
    std::vector<std::string> parts;

    /// The time after which revealed icons are tucked begins again.
    void rearm() {
        check.expected.tucksFrom = at + std::chrono::seconds(check.expected.layout.reveal.autoTuckSeconds);
    }
};

/// Who may cause what a line tells.
enum class By { anybody, user };

/// A kind of line, with a star for each part that differs, and the function that checks it.
struct LineRow {
    std::string_view category;
    std::string_view pattern;
    void (*follow)(LogLine&);
    By by = By::anybody;
};

/// For lines that change nothing in `Expected`.
inline void nothingFollows(LogLine&) {}

// Every kind of line, by what it is about.
[[nodiscard]] std::span<const LineRow> iconLines();
[[nodiscard]] std::span<const LineRow> layoutLines();
[[nodiscard]] std::span<const LineRow> questionLines();
[[nodiscard]] std::span<const LineRow> systemLines();

}  // namespace velko::scenarios::model
