#pragma once

#import <AppKit/AppKit.h>

#include <filesystem>
#include <optional>
#include <vector>

#include "Velko/Checks/LayoutAudit.h"
#include "Velko/View/Node.h"
#include "Velko/mac/Images.h"
#include "VelkoEngine/Ports/MainThread.h"

@class VLKTreeView;

namespace velko {

/// Draws trees into a view that is in no window, and measures what it has drawn. Main thread.
class TreeDrawing final {
 public:
    /// Both outlive this.
    TreeDrawing(MainThread& mainThread, AppIcons& icons);

    /// Shows the tree in place of the one before, and writes a picture of it, unless `picture` is empty.
    /// Nothing if the picture cannot be written.
    [[nodiscard]] std::optional<std::vector<LayoutAudit::Measured>> draw(
        const view::Node& tree, bool isDark, const std::filesystem::path& picture);

 private:
    NSView* paper_;
    VLKTreeView* tree_;
};

}  // namespace velko
