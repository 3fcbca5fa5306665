#include "Velko/Flows/LayoutTransfer.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "Velko/App/Log.h"
#include "Velko/Apps/ChangeWords.h"
#include "Velko/Apps/MenuBarApps.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

namespace {

std::string extension() {
    return std::string(LayoutExport::fileExtension);
}

Dialogs::FileType fileType() {
    return {.identifier = "app.velko.layout"};
}

/// The layout in an export file, or why there is none, in words for people.
std::expected<LayoutExport, std::string> layoutIn(const std::filesystem::path& file) {
    const auto content = AtomicFile::read(file);
    if (!content) {
        return std::unexpected(content.error().description);
    }
    const auto& text = *content;
    if (!text) {
        return std::unexpected("The file is not there any more.");
    }
    auto layout = LayoutExport::read(*text);
    if (!layout) {
        return std::unexpected(describe(layout.error()));
    }
    return *std::move(layout);
}

/// What an import changes.
std::string changesInWords(const AppValues& values, const Workspace& workspace, const LayoutExport& theirs) {
    const std::string rest =
        "Its settings take the place of yours. Apps that it doesn't name stay where they are.";
    if (values.problems.layoutUnreadable) {
        return "It has places for " + appsInWords(theirs.sections.size()) +
               ". The file that can't be read is kept beside the new one.";
    }
    const AppNames names(values, workspace);
    std::size_t moving = 0;
    std::size_t absent = 0;
    std::size_t managed = 0;
    for (const auto& [bundleID, section] : theirs.sections) {
        if (values.managed.places(bundleID)) {
            ++managed;
            continue;
        }
        const bool isHere = isPresent(values, bundleID) || names.isRunning(bundleID) ||
                            workspace.installedName(bundleID).has_value();
        absent += isHere ? 0 : 1;
        moving += isHere && values.layout.section(bundleID) != section ? 1 : 0;
    }
    const std::size_t staying = theirs.sections.size() - moving - absent - managed;
    std::string what = moving == 0 ? "No app gets another place" : "Another place for " + appsInWords(moving);
    what += staying == 0 ? ". " : ", the same place for " + appsInWords(staying) + ". ";
    if (absent > 0) {
        what += appsInWords(absent) + (absent == 1 ? " isn't" : " aren't") + " on this Mac. ";
    }
    if (managed > 0) {
        what += appsInWords(managed) + (managed == 1 ? " stays" : " stay") +
                " where your organisation wants " + (managed == 1 ? "it. " : "them. ");
    }
    return what + rest;
}

}  // namespace

LayoutTransfer::LayoutTransfer(FlowHost& host, const Workspace& workspace, Dialogs& dialogs, Log& log,
                               std::function<void()> imported)
    : host_(host), workspace_(workspace), dialogs_(dialogs), log_(log), imported_(std::move(imported)) {}

/// What becomes of the file that the user chooses, if any.
Dialogs::Chosen LayoutTransfer::then(void (LayoutTransfer::*use)(const std::filesystem::path&)) {
    return [this, use](const std::optional<std::filesystem::path>& file) {
        if (file) {
            (this->*use)(*file);
        }
        askAboutNext();
    };
}

void LayoutTransfer::exportLayout() {
    if (!panel_.isPending()) {
        panel_ = dialogs_.chooseWhereToSave(
            {.title = "Export Layout", .suggestedName = "My Velko Layout." + extension(), .type = fileType()},
            then(&LayoutTransfer::write));
    }
}

void LayoutTransfer::importLayout() {
    if (!panel_.isPending()) {
        panel_ = dialogs_.chooseFileToOpen({.title = "Import Layout",
                                            .message = "Choose a layout exported from Velko on another Mac.",
                                            .type = fileType()},
                                           then(&LayoutTransfer::askToTakeOver));
    }
}

void LayoutTransfer::offerToImport(const std::filesystem::path& file) {
    opened_.push_back(file);
    askAboutNext();
}

void LayoutTransfer::askAboutNext() {
    while (!panel_.isPending() && !opened_.empty()) {
        askToTakeOver(opened_.front());
        if (!panel_.isPending()) {
            opened_.erase(opened_.begin());  // it can't be read
        }
    }
}

void LayoutTransfer::offerToStartAfresh(const std::function<void()>& then) {
    if (panel_.isPending()) {
        return;
    }
    panel_ = dialogs_.ask({.title = "Start with a fresh layout?",
                           .message = "Every app goes to the bar until you have sorted them again. The file "
                                      "that can't be read is kept beside the new one.",
                           .confirm = "Start Afresh",
                           .cancel = "Cancel"},
                          [this, then](bool agreed) {
                              if (agreed && startAfresh()) {
                                  then();
                              }
                              askAboutNext();
                          });
}

/// What Velko has noticed since its start stays. Nothing happens to a layout that can be read by now.
bool LayoutTransfer::startAfresh() {
    if (!host_.values().problems.layoutUnreadable || !host_.edit(Saving::now, [](Layout&) {})) {
        return false;
    }
    log_.log("layout", "started afresh");
    return true;
}

std::expected<void, std::string> LayoutTransfer::exportTo(const std::filesystem::path& file) {
    const LayoutExport content = LayoutExport::of(host_.ownLayout());
    if (const auto written = AtomicFile::replace(file, content.data()); !written) {
        return std::unexpected(written.error().description);
    }
    log_.log("layout",
             "exported " + std::to_string(content.sections.size()) + " placements to " + file.string());
    return {};
}

std::expected<void, std::string> LayoutTransfer::importFrom(const std::filesystem::path& file) {
    const auto layout = layoutIn(file);
    if (!layout) {
        return std::unexpected(layout.error());
    }
    takeOver(*layout, file);
    return {};
}

void LayoutTransfer::write(const std::filesystem::path& file) {
    if (const auto written = exportTo(file); !written) {
        fail("Velko couldn't save the layout.", written.error());
    }
}

void LayoutTransfer::askToTakeOver(const std::filesystem::path& file) {
    auto layout = layoutIn(file);
    if (!layout) {
        fail("Velko couldn't import that layout.", layout.error());
        return;
    }
    std::string what = changesInWords(host_.values(), workspace_, *layout);
    panel_ = dialogs_.ask({.title = "Use the layout “" + file.stem().string() + "”?",
                           .message = std::move(what),
                           .confirm = "Import",
                           .cancel = "Cancel"},
                          [this, file, layout = *std::move(layout)](bool agreed) {
                              std::erase(opened_, file);  // also when it was opened again meanwhile
                              if (agreed) {
                                  takeOver(layout, file);
                              }
                              askAboutNext();
                          });
}

void LayoutTransfer::takeOver(const LayoutExport& layout, const std::filesystem::path& file) {
    host_.edit(ChangeWords::imported(file.stem().string()), [&](Layout& mine) { mine.apply(layout); });
    log_.log("layout",
             "imported " + std::to_string(layout.sections.size()) + " placements from " + file.string());
    imported_();
}

void LayoutTransfer::fail(const std::string& title, const std::string& reason) {
    dialogs_.alert({.title = title, .message = reason});
}

}  // namespace velko
