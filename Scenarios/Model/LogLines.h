#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Model/StepCheck.h"

namespace velko::scenarios::model {

/// A line of the log and the parts of it that its pattern leaves open.
struct LogLine {
    StepCheck& check;
    MainThread::Uptime at;
    std::string text;
    std::vector<std::string> parts;

    /// The time until revealed icons tuck themselves begins anew.
    void rearm() {
        check.expected.tucksFrom = at + std::chrono::seconds(check.expected.layout.reveal.autoTuckSeconds);
    }
};

/// A kind of line, with a star for each part that differs, and what is to be made of one.
struct LineRow {
    std::string_view category;
    std::string_view pattern;
    void (*follow)(LogLine&);
};

/// For lines that change nothing that is compared.
inline void nothingFollows(LogLine&) {}

// Every kind of line, by what it is about.
[[nodiscard]] std::span<const LineRow> iconLines();
[[nodiscard]] std::span<const LineRow> layoutLines();
[[nodiscard]] std::span<const LineRow> questionLines();
[[nodiscard]] std::span<const LineRow> systemLines();

}  // namespace velko::scenarios::model
