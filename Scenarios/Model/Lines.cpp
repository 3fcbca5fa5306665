#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "Scenarios/Model/Heard.h"

namespace velko::scenarios::model {

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

/// Of these, every line is known.
constexpr std::array<std::string_view, 9> closedCategories{
    "inbox", "inventory", "liveactivity", "note", "popout", "reveal", "settings", "showme", "autopilot"};

}  // namespace

void hear(Scene& scene, const Happening& line) {
    for (const auto rows : {linesOfIcons(), linesOfLayout(), linesOfQuestions(), linesOfSystem()}) {
        for (const LineRow& row : rows) {
            auto parts = row.category == line.category ? partsOf(line.text, row.pattern) : std::nullopt;
            if (parts) {
                Heard heard{scene, line.at, line.text, *std::move(parts)};
                row.hear(heard);
                return;
            }
        }
    }
    scene.require(std::ranges::count(closedCategories, line.category) == 0, "the log says nothing unheard of",
                  "[" + line.category + "] " + line.text);
}

}  // namespace velko::scenarios::model
