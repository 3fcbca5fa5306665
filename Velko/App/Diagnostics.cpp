#include "Velko/App/Diagnostics.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

#include "Velko/App/AppController.h"
#include "Velko/App/Log.h"
#include "Velko/Apps/ManagedWords.h"
#include "VelkoCore/Visibility/VisibilityPlan.h"
#include "VelkoEngine/Hiding/VKAssessment.h"
#include "VelkoEngine/MenuBar/MenuBarStrip.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko {

namespace {

constexpr std::size_t linesInReport = 200;

bool isPartOfIdentifier(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return std::isalnum(byte) != 0 || character == '.' || character == '-' || character == '_';
}

/// Whether it has the form of an app's identifier: three words or more with dots between, and not a number.
bool looksLikeApp(std::string_view word) {
    return std::ranges::count(word, '.') >= 2 && std::isalpha(static_cast<unsigned char>(word.front())) != 0;
}

/// Apple's apps and Velko's own identifiers tell nothing about a person.
bool isNeutral(std::string_view app) {
    return app.starts_with("com.apple.") || app.starts_with("app.velko.");
}

std::string withoutPath(std::string line) {
    for (std::size_t at = line.find('/'); at != std::string::npos; at = line.find('/', at + 1)) {
        const bool begins = at == 0 || std::string_view(" \"'(“").contains(line[at - 1]);
        const std::string_view rest = std::string_view(line).substr(at);
        const bool isSystems = rest.starts_with("/System/") || rest.starts_with("/Applications/Velko.app");
        if (begins && !isSystems) {
            // A path may contain blanks, so nobody knows where it ends.
            return line.substr(0, at) + "(a path)";
        }
    }
    return line;
}

/// The name in "asked Slack to quit".
std::string withoutName(std::string line) {
    constexpr std::string_view before = "] asked ";
    constexpr std::string_view after = " to quit";
    const auto begin = line.find(before);
    const auto end = line.rfind(after);
    if (begin != std::string::npos && end != std::string::npos && end > begin + before.size()) {
        line.replace(begin + before.size(), end - begin - before.size(), "an app");
    }
    return line;
}

BundleIDs knownApps(const AppController& controller) {
    const Layout& layout = controller.values().layout;
    BundleIDs apps = layout.seenApps.value_or(BundleIDs());
    for (const auto& [app, section] : layout.sections) {
        apps.insert(app);
    }
    for (const MenuBarItem& item : controller.values().items) {
        apps.insert(item.bundleID);
    }
    return apps;
}

std::string displaysInWords(const Displays& displays) {
    const auto all = displays.displays();
    const auto notched = std::ranges::count_if(all, MenuBarStrip::isNotched);
    return std::to_string(all.size()) + " displays, " + std::to_string(notched) + " with a notch";
}

std::string placesInWords(const AppController& controller) {
    const AppValues& values = controller.values();
    std::size_t hidden = 0;
    for (const MenuBarItem& item : values.items) {
        hidden += controller.engine().current().hides(item.bundleID) ? 1U : 0U;
    }
    return std::to_string(values.items.size()) + " icons, " + std::to_string(hidden) + " of them hidden; " +
           std::to_string(values.layout.sections.size()) + " apps with a place, " +
           std::to_string(values.layout.inbox.size()) + " waiting; managed: " + inWords(values.managed) +
           (values.managedFaults.empty() ? "" : ", with faults");
}

}  // namespace

Anonymiser::Anonymiser(std::vector<Known> known, BundleIDs apps)
    : known_(std::move(known)), apps_(std::move(apps)) {}

std::string Anonymiser::operator()(std::string_view line) {
    std::string text(line);
    for (const Known& known : known_) {
        for (std::size_t at = known.text.empty() ? std::string::npos : text.find(known.text);
             at != std::string::npos; at = text.find(known.text, at + known.replacement.size())) {
            text.replace(at, known.text.size(), known.replacement);
        }
    }
    return withoutApps(withoutName(withoutPath(std::move(text))));
}

std::string Anonymiser::withoutApps(std::string_view line) {
    std::string text;
    while (!line.empty()) {
        std::size_t length = 0;
        while (length < line.size() && isPartOfIdentifier(line[length])) {
            ++length;
        }
        std::string_view word = line.substr(0, length);
        line.remove_prefix(word.size());
        const std::size_t last = word.find_last_not_of(".-_");
        const std::string_view tail = last == std::string_view::npos ? word : word.substr(last + 1);
        word.remove_suffix(tail.size());
        const bool isApp =
            !word.empty() && !isNeutral(word) && (looksLikeApp(word) || apps_.contains(std::string(word)));
        text.append(isApp ? numberOf(std::string(word)) : std::string(word)).append(tail);
        if (!line.empty()) {
            text += line.front();
            line.remove_prefix(1);
        }
    }
    return text;
}

std::string Anonymiser::numberOf(const std::string& app) {
    return "app-" + std::to_string(numbers_.try_emplace(app, numbers_.size() + 1).first->second);
}

std::string diagnostics(const AppController& controller, const Platform& platform, const Log& log) {
    const AppInfo& info = controller.info();
    const Health health = controller.values().health();
    Anonymiser anonymous({{.text = controller.layoutFile().string(), .replacement = "(layout)"},
                          {.text = log.file().string(), .replacement = "(log)"}},
                         knownApps(controller));
    std::string text = "Velko " + info.version + " (" + info.build + "), " + info.channel + "\nmacOS " +
                       info.systemVersion + "\n" +
                       (health.isOk() ? "All is well." : std::string(describe(health.kind))) + "\n" +
                       (info.isInApplications() ? "" : "It is not in /Applications.\n") +
                       displaysInWords(platform.displays) + "\n" + placesInWords(controller) + "\n\n" +
                       engineProbeReport(platform) + "\n\nThe end of the log:\n";
    for (const std::string_view line : log.newest(linesInReport)) {
        // What the debug menu writes names the titles of icons.
        if (!line.contains("  [debug] ")) {
            text += anonymous(line) + "\n";
        }
    }
    return text;
}

}  // namespace velko
