#pragma once

#import <AppKit/AppKit.h>
#include <map>
#include <string>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// A system symbol; nil for no name, or one that this system does not know.
[[nodiscard]] NSImage* symbolImage(const std::string& name, const std::string& description = {});

/// Apps' icons, each looked up once. Main thread.
class AppIcons final : private NonCopyable {
 public:
    /// A copy of that size in points; a plain tile for an app that is not on this machine.
    [[nodiscard]] NSImage* icon(const BundleID& bundleID, double points);

 private:
    std::map<BundleID, NSImage*> found_;
};

}  // namespace velko
