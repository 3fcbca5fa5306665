#include "Playground/Terminal/LayoutFileCommands.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "Playground/Terminal/Folders.h"
#include "Playground/Terminal/Terminal.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Files/LibplistReader.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/LayoutStore.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::playground {

namespace {

/// Says on standard error why something did not happen. Returns exit status 1.
int refuse(const std::string& what, const std::string& why) {
    std::cerr << what << ' ' << why << '\n';
    return 1;
}

/// The identifiers of the apps that the importers may find.
BundleIDs knownApps(const Layout& layout) {
    BundleIDs known;
    for (const auto& [bundleID, section] : layout.sections) {
        known.insert(bundleID);
    }
    for (const scenarios::SampleApp& sample : scenarios::sampleApps()) {
        known.insert(sample.bundleID);
    }
    return known;
}

std::string tuckTime(std::int64_t seconds) {
    return seconds == 0 ? "never tuck icons away by themselves"
                        : "tuck icons away after " + std::to_string(seconds) + " seconds";
}

constexpr char backspace = '\b';
constexpr char deletion = '\x7F';   // most terminals send this for Backspace
constexpr char interrupt = '\x03';  // Control-C and Control-D come as keys in this mode
constexpr char endOfText = '\x04';

void show(const SortSession& session, std::ostream& screen) {
    const SortCard& card = *session.current();
    screen << '\n'
           << session.index() + 1 << " of " << session.cards().size() << "  " << card.name << '\n'
           << "    " << name(card.suggestion.section) << "? " << describe(card.suggestion.reason) << '\n'
           << "    b bar   t tucked   u buried   Backspace back   r accept the rest   q leave unchanged\n"
           << std::flush;
}

void confirm(Section section, std::ostream& screen) {
    screen << "    -> " << name(section) << '\n';
}

/// Keeps the layout as it is before it changes, as the app does. Without that the command goes on.
void keepEarlier(const std::filesystem::path& layoutFile, const Layout& before, HistoryCause cause) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    if (const auto kept = LayoutStore(layoutFile).history().keep(before, cause, now); !kept) {
        std::cerr << "The layout as it was could not be kept. " << kept.error().description << '\n';
    }
}

}  // namespace

std::optional<Layout> loadLayoutFile(const std::filesystem::path& layoutFile, bool mayCreate) {
    auto loaded = LayoutStore(layoutFile).load();
    if (!loaded) {
        refuse("The layout can't be read and stays as it is.", loaded.error().description);
        return std::nullopt;
    }
    if (*loaded) {
        return std::move(*loaded);
    }
    if (!mayCreate) {
        refuse("There is no file", layoutFile.string() + ".");
        return std::nullopt;
    }
    Layout layout = scenarios::firstLayout();
    FolderLock lock = LayoutStore(layoutFile).folderLock();
    const auto taken = lock.take();
    const bool isLeftToOthers = !taken && taken.error().isTaken;
    return isLeftToOthers || saveLayoutFile(layoutFile, layout) ? std::optional(std::move(layout))
                                                                : std::nullopt;
}

bool saveLayoutFile(const std::filesystem::path& layoutFile, const Layout& layout) {
    const auto saved = LayoutStore(layoutFile).save(layout);
    if (!saved) {
        refuse("The layout could not be written.", saved.error().description);
    }
    return saved.has_value();
}

int exportLayoutFile(const Layout& layout, const std::filesystem::path& file) {
    const LayoutExport exported = LayoutExport::of(layout);
    if (const auto written = AtomicFile::replace(file, exported.data()); !written) {
        return refuse("Velko couldn't save the layout.", written.error().description);
    }
    std::cout << "exported " << exported.sections.size() << " placements to " << file.string() << '\n';
    return 0;
}

int importIntoLayoutFile(Layout layout, const std::filesystem::path& layoutFile,
                         const std::filesystem::path& file) {
    constexpr auto failed = "Velko couldn't import that layout.";
    const auto text = readFile(file);
    if (!text) {
        return refuse(failed, text.error());
    }
    const auto imported = LayoutExport::read(*text);
    if (!imported) {
        return refuse(failed, describe(imported.error()));
    }
    const Layout before = layout;
    layout.apply(*imported);
    if (layout != before) {
        keepEarlier(layoutFile, before, HistoryCause::import);
    }
    if (!saveLayoutFile(layoutFile, layout)) {
        return 1;
    }
    std::cout << "imported " << imported->sections.size() << " placements from " << file.string() << '\n';
    return 0;
}

int tellWhatOthersHave(const Layout& layout, const std::filesystem::path& home) {
    std::error_code error;
    if (!std::filesystem::is_directory(home, error)) {
        return refuse(home.string(), "is not a folder.");
    }
    const LibplistReader reader;
    const auto found =
        Importers::detect({.knownBundleIDs = knownApps(layout), .directory = home, .reader = reader});
    if (!found) {
        std::cout << "No preferences of another organiser that Velko knows.\n";
        return 0;
    }
    std::cout << "found " << found->source << ": " << found->sections.size() << " placements\n";
    for (const auto& [bundleID, section] : found->sections) {
        std::cout << "  " << printable(bundleID) << " -> " << name(section) << '\n';
    }
    if (found->autoTuckSeconds) {
        std::cout << "  " << tuckTime(*found->autoTuckSeconds) << '\n';
    }
    if (found->hover) {
        std::cout << (*found->hover ? "  reveal on hover\n" : "  no reveal on hover\n");
    }
    return 0;
}

bool walkCards(SortSession& session, std::istream& keys, std::ostream& screen) {
    const auto choose = [&](Section section) {
        session.choose(section);
        confirm(section, screen);
    };
    std::size_t shown = session.cards().size();
    while (!session.isFinished()) {
        if (session.index() != shown) {
            show(session, screen);
            shown = session.index();
        }
        char key = 0;
        if (!keys.get(key) || key == 'q' || key == interrupt || key == endOfText) {
            return false;
        }
        switch (key) {
            case 'b': choose(Section::bar); break;
            case 't': choose(Section::tucked); break;
            case 'u': choose(Section::buried); break;
            case backspace:
            case deletion: session.back(); break;
            case 'r': session.acceptRest(); break;
            default: break;
        }
    }
    return true;
}

int sortLayoutFile(Layout layout, const std::filesystem::path& layoutFile) {
    std::vector<SortSession::App> apps;
    for (const scenarios::SampleApp& sample : scenarios::sampleApps()) {
        apps.push_back({.bundleID = sample.bundleID, .name = sample.name});
    }
    SortSession session({.apps = apps,
                         .lastClicked = layout.lastClicked,
                         .current = layout.sections,
                         .importSource = std::nullopt,
                         .now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()),
                         .calendar = {}});
    const KeyByKey keyByKey;
    if (!walkCards(session, std::cin, std::cout)) {
        std::cout << "\nLeft as it was.\n";
        return 0;
    }
    const Layout before = layout;
    for (const auto& [bundleID, section] : session.result()) {
        layout.place(bundleID, section);
    }
    layout.hasCompletedSetup = true;
    if (layout != before) {
        keepEarlier(layoutFile, before, HistoryCause::sort);
    }
    if (!saveLayoutFile(layoutFile, layout)) {
        return 1;
    }
    std::cout << "\nSorted: " << session.count(Section::bar) << " in the bar, "
              << session.count(Section::tucked) << " tucked, " << session.count(Section::buried)
              << " buried.\n";
    return 0;
}

}  // namespace velko::playground
