#include "Velko/Flows/LayoutTransfer.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Velko/App/Log.h"
#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/Layout/LayoutFormats.h"

namespace velko {

namespace {

std::string extension() {
    return std::string(LayoutExport::fileExtension);
}

Dialogs::FileType fileType() {
    return {.identifier = "app.velko.layout"};
}

}  // namespace

LayoutTransfer::LayoutTransfer(FlowHost& host, Dialogs& dialogs, Log& log, std::function<void()> imported)
    : host_(host), dialogs_(dialogs), log_(log), imported_(std::move(imported)) {}

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
                                           then(&LayoutTransfer::read));
    }
}

void LayoutTransfer::offerToImport(const std::filesystem::path& file) {
    if (std::ranges::count(opened_, file) == 0) {
        opened_.push_back(file);
        askAboutNext();
    }
}

void LayoutTransfer::askAboutNext() {
    if (panel_.isPending() || opened_.empty()) {
        return;
    }
    const std::filesystem::path& file = opened_.front();
    panel_ = dialogs_.ask({.title = "Use the layout “" + file.stem().string() + "”?",
                           .message = "Velko takes over its places and settings. Apps that it doesn't name "
                                      "stay where they are.",
                           .confirm = "Import",
                           .cancel = "Cancel"},
                          [this, file](bool agreed) {
                              opened_.erase(opened_.begin());
                              if (agreed) {
                                  read(file);
                              }
                              askAboutNext();
                          });
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
    const LayoutExport content = LayoutExport::of(host_.values().layout);
    if (const auto written = AtomicFile::replace(file, content.data()); !written) {
        return std::unexpected(written.error().description);
    }
    log_.log("layout",
             "exported " + std::to_string(content.sections.size()) + " placements to " + file.string());
    return {};
}

std::expected<void, std::string> LayoutTransfer::importFrom(const std::filesystem::path& file) {
    const auto content = AtomicFile::read(file);
    if (!content) {
        return std::unexpected(content.error().description);
    }
    const auto& text = *content;
    if (!text) {
        return std::unexpected("The file is not there any more.");
    }
    const auto layout = LayoutExport::read(*text);
    if (!layout) {
        return std::unexpected(describe(layout.error()));
    }
    host_.edit(Saving::now, [&](Layout& mine) { mine.apply(*layout); });
    log_.log("layout",
             "imported " + std::to_string(layout->sections.size()) + " placements from " + file.string());
    imported_();
    return {};
}

void LayoutTransfer::write(const std::filesystem::path& file) {
    if (const auto written = exportTo(file); !written) {
        fail("Velko couldn't save the layout.", written.error());
    }
}

void LayoutTransfer::read(const std::filesystem::path& file) {
    if (const auto taken = importFrom(file); !taken) {
        fail("Velko couldn't import that layout.", taken.error());
    }
}

void LayoutTransfer::fail(const std::string& title, const std::string& reason) {
    dialogs_.alert({.title = title, .message = reason});
}

}  // namespace velko
