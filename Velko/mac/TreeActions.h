#pragma once

#import <AppKit/AppKit.h>

#include "Velko/View/Tree.h"

/// Takes what the user does to a view of a tree. A view's identifier is its node's id.
/// It hears of the menus that views open.
@protocol TreeActions <NSMenuDelegate>
- (BOOL)perform:(const velko::view::Input&)input on:(NSView*)view;
/// Puts what the view's menu holds now into a menu.
- (void)fill:(NSMenu*)menu of:(NSView*)view;
/// A tile is picked up, or let go.
- (void)dragging:(BOOL)isUnderWay;

- (void)pressed:(NSView*)sender;
- (void)toggled:(NSButton*)sender;
- (void)picked:(NSPopUpButton*)sender;
- (void)segmentPicked:(NSSegmentedControl*)sender;
- (void)menuAsked:(NSView*)sender;
@end
