#pragma once

#import <AppKit/AppKit.h>

/// An app on its way from a tile to a group.
namespace velko::AppDragging {

/// Velko's own, so that nobody else takes it.
[[nodiscard]] inline NSPasteboardType pasteboardType() {
    return @"app.velko.dragged-app";
}

}  // namespace velko::AppDragging
