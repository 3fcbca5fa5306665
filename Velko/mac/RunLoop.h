#pragma once

#import <CoreFoundation/CoreFoundation.h>

namespace velko {

/// Does it from the main run loop itself, when that is in its default mode. What opens a menu or a modal
/// alert has to come from there: amid a piece of Velko's own work it would hold up all the rest, and while
/// another menu or alert is up it would be caught within that.
inline void onMainRunLoop(void (^work)(void)) {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopDefaultMode, ^{
      @autoreleasepool {
          work();
      }
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace velko
