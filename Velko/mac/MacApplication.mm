#import "Velko/mac/MacApplication.h"

#import <AppKit/AppKit.h>

#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr double dockIconPoints = 512;

NSURL* native(const std::filesystem::path& file) {
    return [NSURL fileURLWithPath:velko::native(file.string())];
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
    // From the run loop itself: amid a piece of our work, what the end still has to do could not run.
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      [[NSApplication sharedApplication] terminate:nil];
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

void MacApplication::openFile(const std::filesystem::path& file,
                              const std::optional<std::filesystem::path>& application) {
    NSWorkspace* workspace = [NSWorkspace sharedWorkspace];
    if (!application) {
        [workspace openURL:native(file)];
        return;
    }
    NSMutableArray<NSURL*>* files = [NSMutableArray arrayWithCapacity:1];
    [files addObject:native(file)];
    [workspace openURLs:files
        withApplicationAtURL:native(*application)
               configuration:[NSWorkspaceOpenConfiguration configuration]
           completionHandler:nil];
}

}  // namespace velko
