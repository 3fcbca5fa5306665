#pragma once

#import <AppKit/AppKit.h>

#include "Velko/View/Drawing.h"
#import "Velko/mac/TreeActions.h"

/// Takes what is left of its row or column.
@interface VLKSpacerView : NSView
@end

/// Grows downwards, as what scrolls has to.
@interface VLKDocumentView : NSView
@end

/// Shows a drawing at its own size.
@interface VLKPictureView : NSView
@property(nonatomic) velko::view::Drawing drawing;
@end

/// A button that takes a click also while its window does not have the keyboard.
@interface VLKTreeButton : NSButton
@end

/// An app: a button with a menu, that can be dragged.
@interface VLKTileView : VLKTreeButton <NSDraggingSource, NSMenuDelegate>
@property(nonatomic, weak) id<TreeActions> treeActions;
@property(nonatomic, copy) NSString* app;
@property(nonatomic) BOOL hasMenu;
@end

/// Draws the frame of a group, and takes apps that are dragged onto it.
@interface VLKGroupView : NSView
@property(nonatomic, weak) id<TreeActions> treeActions;
@property(nonatomic) BOOL takesApps;
@end
