#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/Checks/LayoutAudit.h"
#include "Velko/Checks/SampleTrees.h"
#include "Velko/Checks/Subject.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Tree.h"
#include "VelkoEngine/MenuBar/AX.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"

namespace velko::SelfCheck {

namespace {

using namespace std::chrono_literals;

/// A file's name, made of words: "settings, Menu Bar" becomes "settings-menu-bar".
std::string fileNameFor(const std::string& words) {
    std::string name;
    for (const char each : words) {
        const bool isLetter = (each >= 'a' && each <= 'z') || (each >= '0' && each <= '9');
        const bool isCapital = each >= 'A' && each <= 'Z';
        if (isLetter || isCapital) {
            name += isCapital ? static_cast<char>(each - 'A' + 'a') : each;
        } else if (!name.empty() && name.back() != '-') {
            name += '-';
        }
    }
    return name;
}

/// Draws a tree light and dark, judges how it is laid out, and draws it once more.
void drawSample(const Subject& subject, const Sample& sample, Notes& notes) {
    for (const bool isDark : {false, true}) {
        const std::string name = sample.name + (isDark ? ", dark" : ", light");
        auto file = subject.pictures;
        if (!file.empty()) {
            file /= fileNameFor(name) + ".png";
        }
        const auto first = subject.bench->drawTree(sample.tree, isDark, file);
        const auto again = subject.bench->drawTree(sample.tree, isDark, {});
        if (!first || !again) {
            notes.expect(name + ": is drawn", false, file.string());
            continue;
        }
        const auto faults = LayoutAudit::faults(*first);
        notes.expect(name + ": is laid out well", faults.empty(), joined(faults));
        const auto changes = LayoutAudit::differences(*first, *again);
        notes.expect(name + ": is the same after an update", changes.empty(), joined(changes));
    }
}

void collectSymbols(const view::Menu& menu, std::set<std::string>& names) {
    for (const view::MenuItem& item : menu) {
        names.insert(item.symbol);
        collectSymbols(item.submenu, names);
    }
}

void collectSymbols(const view::Node& tree, std::set<std::string>& names) {
    view::walk(tree, [&](const view::Node& node) {
        if (const auto* const symbol = std::get_if<view::Symbol>(&node.content)) {
            names.insert(symbol->name);
        } else if (const auto* const button = std::get_if<view::Button>(&node.content)) {
            names.insert(button->symbol);
        } else if (const auto* const pages = std::get_if<view::Pages>(&node.content)) {
            for (const view::Pages::Tab& tab : pages->tabs) {
                names.insert(tab.symbol);
            }
        }
        collectSymbols(view::menuOf(tree, node.id), names);
    });
}

}  // namespace

void checkSurfaces(const Subject& subject, Notes& notes) {
    if (subject.bench == nullptr) {
        notes.tell("surfaces", "nothing draws here");
        return;
    }
    std::error_code error;
    if (!subject.pictures.empty()) {
        std::filesystem::create_directories(subject.pictures, error);
    }
    // The broom shows this one when something is wrong.
    std::set<std::string> symbols{"exclamationmark.triangle"};
    visitSamples(subject, [&](const Sample& sample) {
        drawSample(subject, sample, notes);
        collectSymbols(sample.tree, symbols);
        collectSymbols(sample.menu, symbols);
    });
    symbols.erase("");
    std::vector<std::string> unknown;
    std::ranges::copy_if(symbols, std::back_inserter(unknown),
                         [&](const std::string& name) { return !subject.bench->hasSymbol(name); });
    notes.expect("every symbol exists", unknown.empty(),
                 unknown.empty() ? std::to_string(symbols.size()) + " symbols" : joined(unknown));
}

namespace {

/// What Accessibility says of everything in this program's windows: one text for each element that has one.
void collectWords(const Accessibility& accessibility, const AXElement& element, int depth,
                  std::multiset<std::string>& words) {
    constexpr int deepest = 25;
    for (const char* const name : {"AXTitle", "AXDescription", "AXValue"}) {
        if (auto text = AX::string(accessibility, element, name); text && !text->empty()) {
            words.insert(*std::move(text));
        }
    }
    if (depth < deepest) {
        for (const AXElement& child : AX::children(accessibility, element)) {
            collectWords(accessibility, child, depth + 1, words);
        }
    }
}

/// The controls of a tree that VoiceOver does not find in an open window.
std::vector<std::string> unspoken(const Platform& platform, const view::Node& tree) {
    std::multiset<std::string> heard;
    collectWords(platform.accessibility, AX::application(platform.accessibility, platform.processes.ownPID()),
                 0, heard);
    std::vector<std::string> missing;
    view::walk(tree, [&](const view::Node& node) {
        const std::string words = view::spoken(node);
        if (view::isControl(node) && !words.empty() && !heard.contains(words)) {
            missing.push_back(words);
        }
    });
    return missing;
}

Surface::Opening openingOf(const Subject& subject, const Sample& sample) {
    const Surfaces::Traits& traits = Surfaces::traitsOf(sample.kind);
    Surface::Opening opening{.title = traits.title.empty() ? "Velko" : std::string(traits.title),
                             .content = sample.tree};
    const auto displays = subject.platform.displays.displays();
    if (!traits.isWindow() && !displays.empty()) {
        const Rect visible = displays.front().visibleFrame;
        opening.place = Surface::Place{
            .anchor = {.x = visible.maxX() - 200, .y = visible.maxY(), .width = 24, .height = 24},
            .bounds = visible};
    }
    return opening;
}

/// Opens a surface for a moment.
void openSample(const Subject& subject, const Sample& sample, Notes& notes) {
    const Platform& platform = subject.platform;
    Surface& surface = subject.bench->surfaces().surface(sample.kind);
    const std::string name(Surfaces::traitsOf(sample.kind).name);
    surface.open(openingOf(subject, sample));
    subject.pass(1s);
    const auto frame = surface.frame();
    const auto displays = platform.displays.displays();
    const bool isOnScreen =
        frame && std::ranges::any_of(displays, [&](const Display& display) {
            return frame->x >= display.frame.x - 1 && frame->maxX() <= display.frame.maxX() + 1 &&
                   frame->y >= display.frame.y - 1 && frame->maxY() <= display.frame.maxY() + 1;
        });
    notes.expect(name + ": is open, and whole on one screen", surface.isOpen() && isOnScreen,
                 frame ? placeOf(*frame) : "no frame");
    for (const std::string& fact : subject.bench->openWindows()) {
        notes.tell(name + ": a window", fact);
    }
    if (isSurelyTrusted(platform)) {
        const auto missing = unspoken(platform, sample.tree);
        notes.expect(name + ": VoiceOver finds every control", missing.empty(), joined(missing));
    } else {
        notes.tell(name + ": VoiceOver", "not asked: there is no permission");
    }
    surface.close();
    subject.pass(500ms);
    notes.expect(name + ": closes", !surface.isOpen());
}

}  // namespace

void openSurfaces(const Subject& subject, Notes& notes) {
    if (subject.bench == nullptr) {
        notes.tell("surfaces", "nothing opens here");
        return;
    }
    std::set<Surfaces::Kind> opened;
    visitSamples(subject, [&](const Sample& sample) {
        if (opened.insert(sample.kind).second) {
            openSample(subject, sample, notes);
        }
    });
}

}  // namespace velko::SelfCheck
