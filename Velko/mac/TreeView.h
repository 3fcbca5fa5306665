#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "Velko/Checks/RenderingCheck.h"
#include "Velko/View/Node.h"
#include "Velko/mac/Images.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/Ports/MainThread.h"

/// Shows one tree after another. What the user does to a view happens to the newest tree.
@interface VLKTreeView : NSView <VLKTreeActions>
/// Whether a menu of a control is open, or a tile is being dragged.
@property(nonatomic, readonly) BOOL isInHand;
/// Both outlive it.
- (instancetype)initWithMainThread:(velko::MainThread&)mainThread icons:(velko::AppIcons&)icons;
- (void)show:(velko::view::Node)tree;
/// Does nothing any more, because its surface has closed.
- (void)stop;
/// Does to a node what the user has done to it outside of this view. Returns whether it took that.
- (BOOL)perform:(const velko::view::Input&)input onNode:(const std::string&)identifier;
/// Presses the button that listens to the key of an event. Returns whether there was one.
- (BOOL)pressKeyOf:(NSEvent*)event;
/// Gives keys to the control that records them. Returns whether there is one.
- (BOOL)recordKeysOf:(NSEvent*)event;
/// Gives a key to the search field in which the user writes. Returns whether the field used it.
- (BOOL)pressFieldKeyOf:(NSEvent*)event;
/// Moves the keyboard's focus to the search field that has it first, or else, if `orAny`, to any that can be
/// used. Returns whether there is one.
- (BOOL)focusFieldOrAny:(BOOL)orAny;
/// When the event is an arrow key, moves the keyboard's focus to the tile in that direction. Returns whether
/// it did.
- (BOOL)walkTilesByKeyOf:(NSEvent*)event;
/// Command and a key do what the item of the focused tile's menu does that has this key. Whether there was
/// one.
- (BOOL)pressMenuKeyOf:(NSEvent*)event;
/// The views of all nodes that have an id.
- (std::vector<velko::RenderingCheck::DrawnView>)drawn;
/// The size that shows everything. It breaks texts into lines where that is needed.
- (NSSize)fit;
@end
