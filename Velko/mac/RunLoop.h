#pragma once

#import <CoreFoundation/CoreFoundation.h>

namespace velko {

/// Runs `work` from the main run loop when that is in its default mode. Whatever opens a menu or an alert has
/// to run this way. Within a piece of Velko's own work it would stop all other work. While another menu or
/// alert is open it would be part of that, and wait for it.
inline void onMainRunLoop(void (^work)(void)) {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopDefaultMode, ^{
      @autoreleasepool {
          work();
      }
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace velko
