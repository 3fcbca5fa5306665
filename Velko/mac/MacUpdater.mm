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

/// Nil when the bundle has none. It is not loaded yet.
NSBundle* framework() {
    NSString* folder = [NSBundle mainBundle].privateFrameworksPath;
    NSString* path = [folder stringByAppendingPathComponent:@"Sparkle.framework"];
    return path == nil ? nil : [NSBundle bundleWithPath:path];
}

}  // namespace

std::optional<std::string> MacUpdater::whyUnavailable() const {
    return framework() == nil ? std::optional<std::string>(missing) : std::nullopt;
}

bool MacUpdater::checkForUpdates() {
    if (controller_ == nil && [framework() load]) {
        const Class found = NSClassFromString(@"SPUStandardUpdaterController");
        controller_ = [[found alloc] initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:nil];
    }
    [controller_ checkForUpdates:nil];
    return controller_ != nil;
}

}  // namespace velko
