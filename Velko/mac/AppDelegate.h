#pragma once

#import <AppKit/AppKit.h>

/// Puts the program together, starts it once the system has finished launching, and ends its work before
/// the process goes.
@interface AppDelegate : NSObject <NSApplicationDelegate>
@end
