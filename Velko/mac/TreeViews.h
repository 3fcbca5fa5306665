#pragma once

#import <AppKit/AppKit.h>

#include "Velko/View/Drawing.h"
#include "Velko/View/Tree.h"

/// Hears what the user does to the views of a tree, and of the menus that they open. A view's identifier is
/// its node's id.
@protocol VLKTreeActions <NSMenuDelegate>
- (BOOL)perform:(const velko::view::Input&)input on:(NSView*)view;
/// Fills a menu with what the view's menu contains now.
- (void)fill:(NSMenu*)menu of:(NSView*)view;
/// Does the same for a list: the menu is about one row, or about the selected rows if `row` is empty.
- (void)fill:(NSMenu*)menu of:(NSView*)view about:(NSString*)row;
/// The user begins or stops to drag a tile.
- (void)dragging:(BOOL)isUnderWay;

- (void)pressed:(NSView*)sender;
- (void)toggled:(NSButton*)sender;
- (void)switched:(NSSwitch*)sender;
- (void)disclosed:(NSButton*)sender;
- (void)searched:(NSSearchField*)sender;
- (void)picked:(NSPopUpButton*)sender;
- (void)segmentPicked:(NSSegmentedControl*)sender;
- (void)menuAsked:(NSView*)sender;
@end

namespace velko {

/// A menu that its delegate fills whenever it opens.
[[nodiscard]] inline NSMenu* menuFilledBy(id<NSMenuDelegate> delegate) {
    NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
    menu.delegate = delegate;
    return menu;
}

}  // namespace velko

/// Dragging an app from a tile to a group.
namespace velko::AppDragging {

/// A type of Velko's own, so that no other program takes it.
[[nodiscard]] inline NSPasteboardType pasteboardType() {
    return @"app.velko.dragged-app";
}

}  // namespace velko::AppDragging

/// Takes the room that is left in its row or column.
@interface VLKSpacerView : NSView
@end

/// Its y grows downwards, which scrolling needs.
@interface VLKDocumentView : NSView
@end

/// Shows a drawing at its own size.
@interface VLKPictureView : NSView
@property(nonatomic) velko::view::Drawing drawing;
@end

/// A button that takes a click even while its window does not have the keyboard.
@interface VLKTreeButton : NSButton
@end

/// A field for what the user looks for.
@interface VLKSearchField : NSSearchField
/// Whether an input method is at work in it, which needs all keys.
@property(nonatomic, readonly) BOOL isComposing;
@end

/// An app: a button that has a menu and can be dragged.
@interface VLKTileView : VLKTreeButton <NSDraggingSource, NSMenuDelegate>
@property(nonatomic, weak) id<VLKTreeActions> treeActions;
@property(nonatomic, copy) NSString* app;
/// Below its icon, on two lines if it is long.
@property(nonatomic, copy) NSString* name;
@property(nonatomic) BOOL hasMenu;
/// A short word at its upper corner; empty: none.
@property(nonatomic, copy) NSString* badge;
@end

/// Draws the frame of a group, and takes apps that the user drops on it.
@interface VLKGroupView : NSView
@property(nonatomic, weak) id<VLKTreeActions> treeActions;
@property(nonatomic) BOOL takesApps;
@end
