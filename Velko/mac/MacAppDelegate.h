#pragma once

#import <AppKit/AppKit.h>

/// Puts the program together, and passes on what the desktop tells it.
@interface VLKAppDelegate : NSObject <NSApplicationDelegate>
@end
