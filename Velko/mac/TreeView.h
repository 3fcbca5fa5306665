#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "Velko/Checks/RenderingCheck.h"
#include "Velko/View/Node.h"
#include "Velko/mac/Images.h"
#import "Velko/mac/TreeActions.h"
#include "VelkoEngine/Ports/MainThread.h"

/// Shows one tree after another, and does what the user does to it by way of the newest.
@interface VLKTreeView : NSView <TreeActions>
/// Whether a menu of a control is open, or a tile is being dragged.
@property(nonatomic, readonly) BOOL isInHand;
/// Both outlive it.
- (instancetype)initWithMainThread:(velko::MainThread&)mainThread icons:(velko::AppIcons&)icons;
- (void)show:(velko::view::Node)tree;
/// Does nothing any more: its surface has closed.
- (void)forget;
/// Presses the button that listens to the key of an event; whether there was one.
- (BOOL)pressKeyOf:(NSEvent*)event;
/// Takes the keyboard to the tile to which an arrow key leads; whether the event is one, among tiles.
- (BOOL)walkTilesByKeyOf:(NSEvent*)event;
/// What every node with an id has become.
- (std::vector<velko::RenderingCheck::DrawnView>)drawn;
/// As large as it has to be to show all; its texts break into lines accordingly.
- (NSSize)fit;
@end
