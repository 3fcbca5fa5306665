#pragma once

#import <AppKit/AppKit.h>

/// What controls have learnt in macOS 27. It is set by name, since older SDKs do not declare it; a system
/// that does not know it leaves the control as it is. Main thread.
namespace velko::NewIn27 {

/// The item's image shows: menus hide images unless told otherwise.
void showImage(NSMenuItem* item);

/// The control looks and speaks as tabs.
void actAsTabs(NSSegmentedControl* control);

}  // namespace velko::NewIn27
