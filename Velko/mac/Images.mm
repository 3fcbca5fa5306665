#import "Velko/mac/Images.h"

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

NSImage* lookUp(NSString* identifier) {
    NSRunningApplication* running =
        [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier].firstObject;
    if (running.icon != nil) {
        return running.icon;
    }
    NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
    NSString* path = [workspace URLForApplicationWithBundleIdentifier:identifier].path;
    return path == nil ? nil : [workspace iconForFile:path];
}

}  // namespace

NSImage* symbolImage(const std::string& name, const std::string& description) {
    return name.empty() ? nil
                        : [NSImage imageWithSystemSymbolName:native(name)
                                    accessibilityDescription:description.empty() ? nil : native(description)];
}

NSImage* AppIcons::icon(const BundleID& bundleID, double points) {
    auto found = found_.find(bundleID);
    if (found == found_.end()) {
        NSImage* image = lookUp(native(bundleID));
        if (image != nil) {
            found = found_.emplace(bundleID, image).first;
        }
    }
    // The image is shared with whoever else asked for it, its size is not.
    NSImage* icon = found != found_.end() ? [found->second copy] : symbolImage("app.dashed");
    icon.size = {.width = points, .height = points};
    return icon;
}

}  // namespace velko
