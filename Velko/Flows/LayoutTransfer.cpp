#include "Velko/Flows/LayoutTransfer.h"

#include <utility>

#include "Velko/Log.h"
#include "VelkoCore/AtomicFile.h"
#include "VelkoCore/LayoutExport.h"

namespace velko {

namespace {

std::string extension() {
    return std::string(LayoutExport::fileExtension);
}

Dialogs::FileType fileType() {
    return {.identifier = "app.velko.layout"};
}

}  // namespace

LayoutTransfer::LayoutTransfer(FlowHost& host, Dialogs& dialogs, Log& log, std::function<void(bool)> imported)
    : host_(host), dialogs_(dialogs), log_(log), imported_(std::move(imported)) {}

void LayoutTransfer::exportLayout() {
    if (panel_.isPending()) {
        return;
    }
    panel_ = dialogs_.chooseWhereToSave(
        {.title = "Export Layout", .suggestedName = "My Velko Layout." + extension(), .type = fileType()},
        [this](const auto& file) {
            if (file) {
                write(*file);
            }
        });
}

void LayoutTransfer::importLayout() {
    if (panel_.isPending()) {
        return;
    }
    panel_ = dialogs_.chooseFileToOpen({.title = "Import Layout",
                                        .message = "Choose a layout exported from Velko on another Mac.",
                                        .type = fileType()},
                                       [this](const auto& file) {
                                           if (file) {
                                               read(*file);
                                           }
                                       });
}

void LayoutTransfer::offerToImport(const std::filesystem::path& file) {
    panel_ = dialogs_.ask({.title = "Use the layout “" + file.stem().string() + "”?",
                           .message = "Velko takes over its places and settings. Apps that it doesn't name "
                                      "stay where they are.",
                           .confirm = "Import",
                           .cancel = "Cancel"},
                          [this, file](bool agreed) {
                              if (agreed) {
                                  read(file);
                              }
                          });
}

void LayoutTransfer::write(const std::filesystem::path& file) {
    const LayoutExport content = LayoutExport::of(host_.values().layout);
    if (const auto written = AtomicFile::replace(file, content.data()); !written) {
        fail("Velko couldn't save the layout.", written.error().description);
        return;
    }
    log_.log("layout",
             "exported " + std::to_string(content.sections.size()) + " placements to " + file.string());
}

void LayoutTransfer::read(const std::filesystem::path& file) {
    const std::string title = "Velko couldn't import that layout.";
    const auto content = AtomicFile::read(file);
    if (!content) {
        fail(title, content.error().description);
        return;
    }
    const auto& text = *content;
    if (!text) {
        fail(title, "The file is not there any more.");
        return;
    }
    const auto layout = LayoutExport::read(*text);
    if (!layout) {
        fail(title, describe(layout.error()));
        return;
    }
    const bool saved = host_.edit(Saving::now, [&](Layout& mine) { mine.apply(*layout); });
    log_.log("layout",
             "imported " + std::to_string(layout->sections.size()) + " placements from " + file.string());
    imported_(saved);
}

void LayoutTransfer::fail(const std::string& title, const std::string& reason) {
    dialogs_.alert({.title = title, .message = reason});
}

}  // namespace velko
