#pragma once

#import <AppKit/AppKit.h>

#include "Velko/View/Tree.h"

/// Takes what the user does to a view of a tree. A view's identifier is its node's id.
@protocol TreeActions <NSObject>
- (BOOL)perform:(const velko::view::Input&)input on:(NSView*)view;
/// The menu that the view opens; nil when it has none.
- (NSMenu*)menuOf:(NSView*)view;
/// A tile is picked up, or let go.
- (void)dragging:(BOOL)isUnderWay;

- (void)pressed:(NSView*)sender;
- (void)toggled:(NSButton*)sender;
- (void)picked:(NSPopUpButton*)sender;
- (void)segmentPicked:(NSSegmentedControl*)sender;
- (void)menuAsked:(NSView*)sender;
@end
