#pragma once

#import <AppKit/AppKit.h>

#include "Velko/View/Drawing.h"
#import "Velko/mac/TreeActions.h"

/// Takes what is left of its row or column.
@interface SpacerView : NSView
@end

/// Grows downwards, as what scrolls has to.
@interface DocumentView : NSView
@end

/// Shows a drawing at its own size.
@interface PictureView : NSView
@property(nonatomic) velko::view::Drawing drawing;
@end

/// A button that takes a click also while its window does not have the keyboard.
@interface TreeButton : NSButton
@end

/// An app: a button with a menu, that can be dragged.
@interface TileView : TreeButton <NSDraggingSource>
@property(nonatomic, weak) id<TreeActions> treeActions;
@property(nonatomic, copy) NSString* app;
@end

/// Draws the frame of a group, and takes apps that are dragged onto it.
@interface GroupView : NSView
@property(nonatomic, weak) id<TreeActions> treeActions;
@property(nonatomic) BOOL takesApps;
@end
