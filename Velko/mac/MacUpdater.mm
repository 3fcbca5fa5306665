#import "Velko/mac/MacUpdater.h"

#import <Foundation/Foundation.h>

#include "VelkoEngine/mac/Conversions.h"

/// What Velko calls of the framework's standard controller.
@protocol UpdaterController <NSObject>
- (instancetype)initWithStartingUpdater:(BOOL)starting
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate;
- (void)checkForUpdates:(id)sender;
@end

namespace velko {

namespace {

/// Nil when the bundle has no such framework, or one that cannot be loaded.
Class controllerClass() {
    NSString* folder = [NSBundle mainBundle].privateFrameworksPath;
    NSString* path = [folder stringByAppendingPathComponent:@"Sparkle.framework"];
    NSBundle* framework = path == nil ? nil : [NSBundle bundleWithPath:path];
    return framework != nil && [framework load] ? NSClassFromString(@"SPUStandardUpdaterController") : Nil;
}

}  // namespace

std::optional<std::string> MacUpdater::whyUnavailable() const {
    return controllerClass() == Nil ? std::optional<std::string>(missing) : std::nullopt;
}

void MacUpdater::checkForUpdates() {
    if (controller_ == nil) {
        const Class found = controllerClass();
        if (found == Nil) {
            return;
        }
        controller_ = [[found alloc] initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:nil];
    }
    [controller_ checkForUpdates:nil];
}

}  // namespace velko
