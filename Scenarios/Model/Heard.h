#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Scenarios/Model/Scene.h"

namespace velko::scenarios::model {

/// A line of the log and the parts of it that its pattern leaves open.
struct Heard {
    Scene& scene;
    MainThread::Uptime at;
    std::string text;
    std::vector<std::string> parts;

    /// The time until revealed icons tuck themselves begins anew.
    void rearm() {
        scene.belief.tucksFrom = at + std::chrono::seconds(scene.belief.layout.reveal.autoTuckSeconds);
    }
};

/// A kind of line, with a star for each part that differs, and what is to be made of one.
struct LineRow {
    std::string_view category;
    std::string_view pattern;
    void (*hear)(Heard&);
};

/// For lines that change nothing that is compared.
inline void nothingFollows(Heard&) {}

// Every kind of line, by what it is about.
[[nodiscard]] std::span<const LineRow> linesOfIcons();
[[nodiscard]] std::span<const LineRow> linesOfLayout();
[[nodiscard]] std::span<const LineRow> linesOfQuestions();
[[nodiscard]] std::span<const LineRow> linesOfSystem();

}  // namespace velko::scenarios::model
