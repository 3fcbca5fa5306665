#pragma once

#import <AppKit/AppKit.h>
#include <map>
#include <string>

#include "Velko/View/Drawing.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// A system symbol; nil without a name, or with one that this system does not know.
[[nodiscard]] NSImage* symbolImage(const std::string& name, const std::string& description = {});

/// The icons of apps. It looks each one up only once, until it is told to forget them. Main thread.
class AppIcons final : private NonCopyable {
 public:
    /// A copy of the icon in that size in points. An app that this Mac does not have gets a plain tile.
    [[nodiscard]] NSImage* icon(const BundleID& bundleID, double points);

    /// Keeps no icon any longer. What shows one has a copy of its own.
    void forget() { found_.clear(); }

 private:
    std::map<BundleID, NSImage*> found_;
};

}  // namespace velko

/// Paints drawings. Main thread.
namespace velko::Painting {

/// The ink's colour, which suits light and dark windows.
[[nodiscard]] NSColor* color(view::Ink ink);

/// Paints into the current context, where y must grow downwards.
void paint(const view::Drawing& drawing);

/// An image for the menu bar, which uses only its opacity.
[[nodiscard]] NSImage* templateImage(const view::Drawing& drawing);

}  // namespace velko::Painting
