#pragma once

#import <AppKit/AppKit.h>

/// What controls can do since macOS 27. Older SDKs do not declare it, so it is set by name. A system that
/// does not know it leaves the control as it is. Main thread.
namespace velko::NewIn27 {

/// Shows the item's image: menus hide images by default.
void showImage(NSMenuItem* item);

/// Makes the control look like tabs, and lets VoiceOver call them tabs.
void actAsTabs(NSSegmentedControl* control);

}  // namespace velko::NewIn27
