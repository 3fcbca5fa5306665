#include "Playground/Terminal/LayoutFileCommands.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <system_error>

#include "Playground/Terminal/Printable.h"
#include "Scenarios/SampleApps.h"
#include "Simulator/Files/LibplistReader.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/LayoutExport.h"
#include "VelkoCore/Layout/LayoutStore.h"

namespace velko::playground {

namespace {

/// Says why something did not happen.
int refuse(const std::string& what, const std::string& why) {
    std::cerr << what << ' ' << why << '\n';
    return 1;
}

/// The identifiers by which another organiser's items are recognised.
BundleIDs knownApps(const Layout& layout) {
    BundleIDs known;
    for (const auto& [bundleID, section] : layout.sections) {
        known.insert(bundleID);
    }
    for (const scenarios::SampleApp& neighbour : scenarios::sampleApps()) {
        known.insert(neighbour.bundleID);
    }
    return known;
}

std::string tuckTime(std::int64_t seconds) {
    return seconds == 0 ? "never tuck icons away by themselves"
                        : "tuck icons away after " + std::to_string(seconds) + " seconds";
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
    const auto content = AtomicFile::read(file);
    if (!content) {
        return refuse(failed, content.error().description);
    }
    const std::optional<std::string>& text = *content;
    if (!text) {
        return refuse(failed, "There is no file " + file.string() + ".");
    }
    const auto imported = LayoutExport::read(*text);
    if (!imported) {
        return refuse(failed, describe(imported.error()));
    }
    layout.apply(*imported);
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

}  // namespace velko::playground
