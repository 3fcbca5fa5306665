#import "Velko/mac/MacDesktop.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#import <ServiceManagement/ServiceManagement.h>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr double dockIconPoints = 512;

NSURL* fileURL(const std::filesystem::path& file) {
    return [NSURL fileURLWithPath:native(file.string())];
}

}  // namespace

Application::Policy MacApplication::policy() const {
    return [NSApplication sharedApplication].activationPolicy == NSApplicationActivationPolicyRegular
               ? Policy::regular
               : Policy::accessory;
}

void MacApplication::setPolicy(Policy policy) {
    [[NSApplication sharedApplication] setActivationPolicy:policy == Policy::regular
                                                               ? NSApplicationActivationPolicyRegular
                                                               : NSApplicationActivationPolicyAccessory];
}

void MacApplication::showDockIcon() {
    NSImage* icon = [[NSImage imageNamed:NSImageNameApplicationIcon] copy];
    icon.size = {.width = dockIconPoints, .height = dockIconPoints};
    [NSApplication sharedApplication].applicationIconImage = icon;
}

void MacApplication::activate() {
    [[NSApplication sharedApplication] activate];
}

void MacApplication::terminate() {
    // It has to come from the run loop: within a piece of our own work, the other work that the end needs
    // could not run.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      [[NSApplication sharedApplication] terminate:nil];
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

void MacApplication::openFile(const std::filesystem::path& file,
                              const std::optional<std::filesystem::path>& application) {
    NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
    if (!application) {
        [workspace openURL:fileURL(file)];
        return;
    }
    NSMutableArray<NSURL*>* files = [NSMutableArray arrayWithCapacity:1];
    [files addObject:fileURL(file)];
    [workspace openURLs:files
        withApplicationAtURL:fileURL(*application)
               configuration:[NSWorkspaceOpenConfiguration configuration]
           completionHandler:nil];
}

namespace {

Application::Outcome outcomeOf(BOOL done, NSError* error) {
    if (!done) {
        return std::unexpected(portable(error.localizedDescription));
    }
    return {};
}

}  // namespace

Application::Outcome MacApplication::moveToTrash(const std::filesystem::path& file) {
    NSError* error = nil;
    const BOOL done = [[NSFileManager defaultManager] trashItemAtURL:fileURL(file)
                                                    resultingItemURL:nil
                                                               error:&error];
    return outcomeOf(done, error);
}

Application::Outcome MacApplication::copy(const std::filesystem::path& from,
                                          const std::filesystem::path& to) {
    NSError* error = nil;
    const BOOL done = [[NSFileManager defaultManager] copyItemAtURL:fileURL(from)
                                                              toURL:fileURL(to)
                                                              error:&error];
    return outcomeOf(done, error);
}

void MacApplication::openAnother(const std::filesystem::path& program,
                                 std::function<void(const Outcome&)> done) {
    NSWorkspaceOpenConfiguration* configuration = [NSWorkspaceOpenConfiguration configuration];
    configuration.createsNewApplicationInstance = YES;
    [[NSWorkspace sharedWorkspace] openApplicationAtURL:fileURL(program)
                                          configuration:configuration
                                      completionHandler:^(NSRunningApplication* running, NSError* error) {
                                        // The system calls this on a queue of its own.
                                        const Outcome outcome = outcomeOf(running != nil, error);
                                        CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
                                          done(outcome);
                                        });
                                        CFRunLoopWakeUp(CFRunLoopGetMain());
                                      }];
}

bool MacDefaults::isOn(const std::string& key) const {
    return [[NSUserDefaults standardUserDefaults] boolForKey:native(key)];
}

void MacDefaults::setOn(const std::string& key, bool on) {
    [[NSUserDefaults standardUserDefaults] setBool:on forKey:native(key)];
}

std::string MacDefaults::text(const std::string& key) const {
    return portable([[NSUserDefaults standardUserDefaults] stringForKey:native(key)]);
}

void MacDefaults::setText(const std::string& key, const std::string& text) {
    [[NSUserDefaults standardUserDefaults] setObject:native(text) forKey:native(key)];
}

LoginItem::Status MacLoginItem::status() const {
    switch ([SMAppService mainAppService].status) {
        case SMAppServiceStatusNotRegistered:
            return Status::notRegistered;
        case SMAppServiceStatusEnabled:
            return Status::enabled;
        case SMAppServiceStatusRequiresApproval:
            return Status::requiresApproval;
        case SMAppServiceStatusNotFound:
            return Status::notFound;
    }
    return Status::notFound;
}

std::expected<void, std::string> MacLoginItem::setEnabled(bool enabled) {
    SMAppService* service = [SMAppService mainAppService];
    NSError* error = nil;
    const BOOL done =
        enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
    if (!done) {
        return std::unexpected(portable(error.localizedDescription));
    }
    return {};
}

void MacPasteboard::setText(const std::string& text) {
    NSPasteboard* pasteboard = [NSPasteboard generalPasteboard];
    [pasteboard clearContents];
    [pasteboard setString:native(text) forType:NSPasteboardTypeString];
}

}  // namespace velko

/// The methods of the framework's standard controller that Velko calls.
@protocol VLKUpdaterController <NSObject>
- (instancetype)initWithStartingUpdater:(BOOL)starting
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate;
- (void)checkForUpdates:(id)sender;
@end

namespace velko {

namespace {

/// The framework, which may not be loaded yet; nil when the bundle has none.
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
