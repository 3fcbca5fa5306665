// What Velko calls of AppKit, declared for the cross build. A build on a Mac uses Apple's own.
#pragma once

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

@class NSApplication, NSImage, NSMenu, NSMenuItem, NSPasteboard, NSScreen, NSView, NSWindow, UTType;

typedef float NSLayoutPriority;
typedef CGFloat NSFontWeight;
typedef NSInteger NSControlStateValue;
typedef NSInteger NSModalResponse;
typedef NSInteger NSWindowLevel;
typedef NSString* NSAppearanceName;
typedef NSString* NSBitmapImageRepPropertyKey;
typedef NSString* NSAccessibilityNotificationName;
typedef NSString* NSAccessibilityNotificationUserInfoKey;
typedef NSString* NSAccessibilityRole;
typedef NSString* NSImageName;
typedef NSString* NSPasteboardType;
typedef NSString* NSStatusItemAutosaveName;
typedef NSString* NSToolbarIdentifier;
typedef NSString* NSToolbarItemIdentifier;
typedef NSString* NSUserInterfaceItemIdentifier;

static const NSLayoutPriority NSLayoutPriorityRequired = 1000;
static const NSLayoutPriority NSLayoutPriorityDefaultHigh = 750;
static const NSLayoutPriority NSLayoutPriorityDefaultLow = 250;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;
static const NSModalResponse NSModalResponseOK = 1;
static const NSModalResponse NSAlertFirstButtonReturn = 1000;
static const NSWindowLevel NSFloatingWindowLevel = 3;
static const NSWindowLevel NSStatusWindowLevel = 25;
static const CGFloat NSVariableStatusItemLength = -1;

// Options are whole numbers in C++, so that they combine.

typedef unsigned long long NSEventMask;
enum : NSEventMask {
    NSEventMaskLeftMouseDown = 1ULL << 1,
    NSEventMaskLeftMouseUp = 1ULL << 2,
    NSEventMaskRightMouseDown = 1ULL << 3,
    NSEventMaskRightMouseUp = 1ULL << 4,
    NSEventMaskMouseMoved = 1ULL << 5,
    NSEventMaskKeyDown = 1ULL << 10,
    NSEventMaskAny = 18446744073709551615ULL
};

typedef NSUInteger NSEventModifierFlags;
enum : NSEventModifierFlags {
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20
};

typedef NSUInteger NSAutoresizingMaskOptions;
enum : NSAutoresizingMaskOptions { NSViewWidthSizable = 2, NSViewHeightSizable = 16, NSViewMaxYMargin = 32 };

typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskResizable = 1 << 3,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7
};

typedef NSUInteger NSWindowCollectionBehavior;
enum : NSWindowCollectionBehavior {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8
};

typedef NSUInteger NSDragOperation;
enum : NSDragOperation { NSDragOperationNone = 0, NSDragOperationMove = 16 };

typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1
} NSApplicationActivationPolicy;
typedef enum NSEventType : NSUInteger {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,
    NSEventTypeSystemDefined = 14
} NSEventType;
typedef enum NSEventSubtype : short {} NSEventSubtype;
typedef enum NSUserInterfaceLayoutOrientation : NSInteger {
    NSUserInterfaceLayoutOrientationHorizontal = 0,
    NSUserInterfaceLayoutOrientationVertical = 1
} NSUserInterfaceLayoutOrientation;
typedef enum NSLayoutConstraintOrientation : NSInteger {
    NSLayoutConstraintOrientationHorizontal = 0,
    NSLayoutConstraintOrientationVertical = 1
} NSLayoutConstraintOrientation;
typedef enum NSLayoutAttribute : NSInteger {
    NSLayoutAttributeTop = 3,
    NSLayoutAttributeLeading = 5,
    NSLayoutAttributeCenterX = 9,
    NSLayoutAttributeCenterY = 10
} NSLayoutAttribute;
typedef enum NSStackViewDistribution : NSInteger { NSStackViewDistributionFill = 0 } NSStackViewDistribution;
typedef enum NSLineCapStyle : NSUInteger { NSLineCapStyleRound = 1 } NSLineCapStyle;
typedef enum NSLineJoinStyle : NSUInteger { NSLineJoinStyleRound = 1 } NSLineJoinStyle;
typedef enum NSImageResizingMode : NSInteger { NSImageResizingModeStretch = 0 } NSImageResizingMode;
typedef enum NSTextAlignment : NSInteger {
    NSTextAlignmentCenter = 1,
    NSTextAlignmentNatural = 4
} NSTextAlignment;
typedef enum NSButtonType : NSUInteger {
    NSButtonTypePushOnPushOff = 1,
    NSButtonTypeSwitch = 3,
    NSButtonTypeMomentaryChange = 5,
    NSButtonTypeMomentaryPushIn = 7
} NSButtonType;
typedef enum NSBezelStyle : NSUInteger { NSBezelStylePush = 1, NSBezelStyleDisclosure = 5 } NSBezelStyle;
typedef enum NSProgressIndicatorStyle : NSUInteger {
    NSProgressIndicatorStyleBar = 0
} NSProgressIndicatorStyle;
typedef enum NSTableViewStyle : NSInteger { NSTableViewStyleInset = 2 } NSTableViewStyle;
typedef enum NSTableViewColumnAutoresizingStyle : NSUInteger {
    NSTableViewUniformColumnAutoresizingStyle = 1
} NSTableViewColumnAutoresizingStyle;
typedef enum NSCellImagePosition : NSUInteger {
    NSNoImage = 0,
    NSImageOnly = 1,
    NSImageLeading = 7
} NSCellImagePosition;
typedef enum NSSegmentSwitchTracking : NSUInteger {
    NSSegmentSwitchTrackingSelectOne = 0
} NSSegmentSwitchTracking;
typedef enum NSBitmapImageFileType : NSUInteger { NSBitmapImageFileTypePNG = 4 } NSBitmapImageFileType;
typedef enum NSBoxType : NSUInteger { NSBoxPrimary = 0, NSBoxSeparator = 2, NSBoxCustom = 4 } NSBoxType;
typedef enum NSTitlePosition : NSUInteger { NSNoTitle = 0 } NSTitlePosition;
typedef enum NSBorderType : NSUInteger { NSNoBorder = 0, NSLineBorder = 1 } NSBorderType;
typedef enum NSVisualEffectMaterial : NSInteger { NSVisualEffectMaterialPopover = 6 } NSVisualEffectMaterial;
typedef enum NSVisualEffectBlendingMode : NSInteger {
    NSVisualEffectBlendingModeBehindWindow = 0
} NSVisualEffectBlendingMode;
typedef enum NSVisualEffectState : NSInteger { NSVisualEffectStateActive = 1 } NSVisualEffectState;
typedef enum NSBackingStoreType : NSUInteger { NSBackingStoreBuffered = 2 } NSBackingStoreType;
typedef enum NSWindowTabbingMode : NSInteger { NSWindowTabbingModeDisallowed = 2 } NSWindowTabbingMode;
typedef enum NSWindowToolbarStyle : NSInteger { NSWindowToolbarStylePreference = 2 } NSWindowToolbarStyle;
typedef enum NSToolbarDisplayMode : NSUInteger { NSToolbarDisplayModeIconAndLabel = 1 } NSToolbarDisplayMode;
typedef enum NSWindowAnimationBehavior : NSInteger {
    NSWindowAnimationBehaviorNone = 2
} NSWindowAnimationBehavior;
typedef enum NSAccessibilityPriorityLevel : NSInteger {
    NSAccessibilityPriorityHigh = 90
} NSAccessibilityPriorityLevel;
typedef enum NSDraggingContext : NSInteger { NSDraggingContextWithinApplication = 1 } NSDraggingContext;

@interface NSEvent : NSObject
@property(class, readonly) NSPoint mouseLocation;
@property(class, readonly) NSEventModifierFlags modifierFlags;
@property(class, readonly) NSUInteger pressedMouseButtons;
@property(readonly) NSEventType type;
@property(readonly) NSEventSubtype subtype;
@property(readonly) NSInteger data1;
@property(readonly) NSTimeInterval timestamp;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
@property(readonly) NSPoint locationInWindow;
@property(readonly, weak) NSWindow* window;
@property(readonly, copy) NSString* charactersIgnoringModifiers;
@property(readonly, getter=isARepeat) BOOL ARepeat;
+ (id)addGlobalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(void (^)(NSEvent*))block;
+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask handler:(NSEvent* (^)(NSEvent*))block;
+ (void)removeMonitor:(id)monitor;
@end

@interface NSColor : NSObject
@property(class, readonly, strong) NSColor* labelColor;
@property(class, readonly, strong) NSColor* secondaryLabelColor;
@property(class, readonly, strong) NSColor* controlAccentColor;
@property(class, readonly, strong) NSColor* linkColor;
@property(class, readonly, strong) NSColor* systemOrangeColor;
@property(class, readonly, strong) NSColor* blackColor;
@property(class, readonly, strong) NSColor* clearColor;
@property(class, readonly, strong) NSColor* windowBackgroundColor;
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha;
- (void)setFill;
- (void)setStroke;
@end

@interface NSFont : NSObject
@property(class, readonly) CGFloat systemFontSize;
@property(class, readonly) CGFloat smallSystemFontSize;
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end

@interface NSBezierPath : NSObject
@property CGFloat lineWidth;
@property NSLineCapStyle lineCapStyle;
@property NSLineJoinStyle lineJoinStyle;
+ (NSBezierPath*)bezierPath;
+ (void)fillRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect xRadius:(CGFloat)xRadius yRadius:(CGFloat)yRadius;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
- (void)curveToPoint:(NSPoint)point controlPoint1:(NSPoint)control1 controlPoint2:(NSPoint)control2;
- (void)closePath;
- (void)fill;
- (void)stroke;
@end

@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
@property NSSize size;
@property NSEdgeInsets capInsets;
@property NSImageResizingMode resizingMode;
- (void)setTemplate:(BOOL)isTemplate;
+ (NSImage*)imageNamed:(NSImageName)name;
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description;
+ (NSImage*)imageWithSize:(NSSize)size flipped:(BOOL)flipped drawingHandler:(BOOL (^)(NSRect rect))handler;
@end

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuNeedsUpdate:(NSMenu*)menu;
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@interface NSMenu : NSObject
@property BOOL autoenablesItems;
@property(weak) id<NSMenuDelegate> delegate;
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
- (void)removeAllItems;
- (void)cancelTracking;
- (NSMenuItem*)addItemWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key;
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item atLocation:(NSPoint)location inView:(NSView*)view;
@end

@interface NSMenuItem : NSObject
@property(getter=isEnabled) BOOL enabled;
@property NSControlStateValue state;
@property(strong) NSImage* image;
@property(strong) NSMenu* submenu;
@property(weak) id target;
@property SEL action;
@property(strong) id representedObject;
@property(copy) NSString* toolTip;
@property(copy) NSString* title;
@property NSEventModifierFlags keyEquivalentModifierMask;
+ (NSMenuItem*)separatorItem;
+ (instancetype)sectionHeaderWithTitle:(NSString*)title;
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key;
@end

@protocol NSMenuItemValidation <NSObject>
- (BOOL)validateMenuItem:(NSMenuItem*)item;
@end

@interface NSResponder : NSObject
@property(strong) NSMenu* menu;
@property(readonly, strong) NSUndoManager* undoManager;
- (void)keyDown:(NSEvent*)event;
- (void)mouseDown:(NSEvent*)event;
- (void)mouseDragged:(NSEvent*)event;
- (void)mouseUp:(NSEvent*)event;
- (void)mouseEntered:(NSEvent*)event;
- (void)mouseExited:(NSEvent*)event;
- (void)cancelOperation:(id)sender;
- (void)selectAll:(id)sender;
@end

typedef enum NSTrackingAreaOptions : NSUInteger {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingActiveAlways = 0x80,
    NSTrackingInVisibleRect = 0x200
} NSTrackingAreaOptions;

@interface NSTrackingArea : NSObject
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(id)owner
                    userInfo:(NSDictionary*)userInfo;
@end

@interface NSLayoutConstraint : NSObject
@property(getter=isActive) BOOL active;
@property NSLayoutPriority priority;
@property CGFloat constant;
@end

@interface NSLayoutAnchor : NSObject
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor constant:(CGFloat)constant;
@end

@interface NSLayoutXAxisAnchor : NSLayoutAnchor
@end

@interface NSLayoutYAxisAnchor : NSLayoutAnchor
@end

@interface NSLayoutDimension : NSLayoutAnchor
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)constant;
- (NSLayoutConstraint*)constraintGreaterThanOrEqualToConstant:(CGFloat)constant;
- (NSLayoutConstraint*)constraintLessThanOrEqualToConstant:(CGFloat)constant;
@end

@protocol NSPasteboardWriting <NSObject>
@end

@interface NSPasteboardItem : NSObject <NSPasteboardWriting>
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)type;
@end

@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard* generalPasteboard;
- (NSInteger)clearContents;
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)type;
- (NSString*)stringForType:(NSPasteboardType)type;
@end

@interface NSDraggingItem : NSObject
- (instancetype)initWithPasteboardWriter:(id<NSPasteboardWriting>)writer;
- (void)setDraggingFrame:(NSRect)frame contents:(id)contents;
@end

@interface NSDraggingSession : NSObject
@end

@protocol NSDraggingInfo <NSObject>
@property(readonly) NSPasteboard* draggingPasteboard;
@end

@protocol NSDraggingSource <NSObject>
- (NSDragOperation)draggingSession:(NSDraggingSession*)session
    sourceOperationMaskForDraggingContext:(NSDraggingContext)context;
@optional
- (void)draggingSession:(NSDraggingSession*)session willBeginAtPoint:(NSPoint)point;
- (void)draggingSession:(NSDraggingSession*)session
           endedAtPoint:(NSPoint)point
              operation:(NSDragOperation)operation;
@end

@protocol NSDraggingDestination <NSObject>
@optional
- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender;
- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender;
- (void)draggingExited:(id<NSDraggingInfo>)sender;
- (BOOL)performDragOperation:(id<NSDraggingInfo>)sender;
@end

@interface NSAppearance : NSObject
+ (NSAppearance*)appearanceNamed:(NSAppearanceName)name;
@end

@protocol NSAppearanceCustomization <NSObject>
@property(strong) NSAppearance* appearance;
@end

@interface NSImageRep : NSObject
@end

@interface NSBitmapImageRep : NSImageRep
- (NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                        properties:(NSDictionary<NSBitmapImageRepPropertyKey, id>*)properties;
@end

@interface NSView : NSResponder <NSDraggingDestination, NSAppearanceCustomization>
@property NSRect frame;
@property NSRect bounds;
@property(readonly, strong) NSWindow* window;
@property(readonly) NSView* superview;
@property(copy) NSArray<NSView*>* subviews;
@property(getter=isHidden) BOOL hidden;
@property BOOL needsDisplay;
@property(readonly, getter=isFlipped) BOOL flipped;
@property(readonly) NSSize fittingSize;
@property(readonly) BOOL hasAmbiguousLayout;
- (NSSize)intrinsicContentSize;
- (NSView*)hitTest:(NSPoint)point;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property NSAutoresizingMaskOptions autoresizingMask;
@property(copy) NSString* toolTip;
@property(copy) NSUserInterfaceItemIdentifier identifier;
@property(readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property(readonly, strong) NSLayoutDimension* widthAnchor;
@property(readonly, strong) NSLayoutDimension* heightAnchor;
- (instancetype)initWithFrame:(NSRect)frame;
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
- (void)setFrameSize:(NSSize)size;
- (void)layoutSubtreeIfNeeded;
- (void)invalidateIntrinsicContentSize;
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation;
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation;
- (NSRect)alignmentRectForFrame:(NSRect)frame;
- (NSPoint)convertPoint:(NSPoint)point fromView:(NSView*)view;
- (NSBitmapImageRep*)bitmapImageRepForCachingDisplayInRect:(NSRect)rect;
- (void)cacheDisplayInRect:(NSRect)rect toBitmapImageRep:(NSBitmapImageRep*)bitmapImageRep;
- (void)drawRect:(NSRect)dirtyRect;
- (void)addTrackingArea:(NSTrackingArea*)trackingArea;
- (BOOL)acceptsFirstMouse:(NSEvent*)event;
- (void)registerForDraggedTypes:(NSArray<NSPasteboardType>*)types;
- (void)unregisterDraggedTypes;
- (NSDraggingSession*)beginDraggingSessionWithItems:(NSArray<NSDraggingItem*>*)items
                                              event:(NSEvent*)event
                                             source:(id<NSDraggingSource>)source;
@property(getter=isAccessibilityElement) BOOL accessibilityElement;
@property(copy) NSAccessibilityRole accessibilityRole;
@property(copy) NSString* accessibilityLabel;
@end

@interface NSText : NSView
- (void)copy:(id)sender;
@end

@protocol NSTextInputClient
- (BOOL)hasMarkedText;
@end

@interface NSTextView : NSText <NSTextInputClient>
@end

@interface NSCell : NSObject
@property(getter=isAccessibilityElement) BOOL accessibilityElement;
@property BOOL truncatesLastVisibleLine;
@end

@interface NSControl : NSView
@property(strong) NSCell* cell;
@property(weak) id target;
@property SEL action;
@property(getter=isEnabled) BOOL enabled;
@property(copy) NSString* stringValue;
@property(copy) NSFont* font;
@property NSTextAlignment alignment;
- (NSText*)currentEditor;
- (NSSize)sizeThatFits:(NSSize)size;
- (NSInteger)sendActionOn:(NSEventMask)mask;
- (void)performClick:(id)sender;
@end

@interface NSButton : NSControl
@property(copy) NSString* title;
@property(strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property NSBezelStyle bezelStyle;
@property(copy) NSColor* bezelColor;
@property(copy) NSColor* contentTintColor;
@property(getter=isBordered) BOOL bordered;
@property NSControlStateValue state;
@property(copy) NSString* keyEquivalent;
- (void)setButtonType:(NSButtonType)type;
- (void)highlight:(BOOL)flag;
@end

@interface NSPopUpButton : NSButton
@property(strong) NSMenu* menu;
@property(readonly) NSInteger indexOfSelectedItem;
- (instancetype)initWithFrame:(NSRect)frame pullsDown:(BOOL)pullsDown;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
@end

@interface NSTextField : NSControl
@property(copy) NSColor* textColor;
@property(getter=isSelectable) BOOL selectable;
@property CGFloat preferredMaxLayoutWidth;
@property NSInteger maximumNumberOfLines;
+ (instancetype)labelWithString:(NSString*)text;
+ (instancetype)wrappingLabelWithString:(NSString*)text;
@end

@interface NSSearchField : NSTextField
@property(copy) NSString* placeholderString;
@property BOOL sendsWholeSearchString;
@property BOOL sendsSearchStringImmediately;
@end

@interface NSSwitch : NSControl
@property NSControlStateValue state;
@end

@interface NSProgressIndicator : NSView
@property(getter=isIndeterminate) BOOL indeterminate;
@property double doubleValue;
@property double minValue;
@property double maxValue;
@property NSProgressIndicatorStyle style;
@end

@interface NSImageView : NSControl
@property(strong) NSImage* image;
@property(copy) NSImageSymbolConfiguration* symbolConfiguration;
@property(copy) NSColor* contentTintColor;
@end

@interface NSSegmentedControl : NSControl
@property NSInteger segmentCount;
@property NSInteger selectedSegment;
@property NSSegmentSwitchTracking trackingMode;
- (void)setLabel:(NSString*)label forSegment:(NSInteger)segment;
- (void)setImage:(NSImage*)image forSegment:(NSInteger)segment;
@end

@interface NSBox : NSView
@property NSBoxType boxType;
@property NSTitlePosition titlePosition;
@property(copy) NSColor* borderColor;
@property CGFloat borderWidth;
@property CGFloat cornerRadius;
@end

@interface NSStackView : NSView
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSStackViewDistribution distribution;
@property CGFloat spacing;
@property NSEdgeInsets edgeInsets;
@property BOOL detachesHiddenViews;
@property(readonly, copy) NSArray<NSView*>* arrangedSubviews;
- (void)addArrangedSubview:(NSView*)view;
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index;
@end

@interface NSClipView : NSView
@end

@interface NSScrollView : NSView
@property(strong) NSView* documentView;
@property(strong) NSClipView* contentView;
@property BOOL hasVerticalScroller;
@property BOOL autohidesScrollers;
@property BOOL drawsBackground;
@property BOOL automaticallyAdjustsContentInsets;
@property NSBorderType borderType;
@end

@class NSTableColumn, NSTableHeaderView, NSTableRowView, NSTableView;

@protocol NSTableViewDataSource <NSObject>
@optional
- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView;
@end

@protocol NSTableViewDelegate <NSObject>
@optional
- (NSView*)tableView:(NSTableView*)tableView viewForTableColumn:(NSTableColumn*)column row:(NSInteger)row;
- (NSTableRowView*)tableView:(NSTableView*)tableView rowViewForRow:(NSInteger)row;
- (CGFloat)tableView:(NSTableView*)tableView heightOfRow:(NSInteger)row;
- (BOOL)tableView:(NSTableView*)tableView shouldSelectRow:(NSInteger)row;
- (NSString*)tableView:(NSTableView*)tableView
    typeSelectStringForTableColumn:(NSTableColumn*)column
                               row:(NSInteger)row;
- (void)tableViewSelectionDidChange:(NSNotification*)notification;
@end

@interface NSTableColumn : NSObject
- (instancetype)initWithIdentifier:(NSUserInterfaceItemIdentifier)identifier;
@end

@interface NSTableRowView : NSView
@end

@interface NSTableView : NSControl
@property(weak) id<NSTableViewDataSource> dataSource;
@property(weak) id<NSTableViewDelegate> delegate;
@property(strong) NSTableHeaderView* headerView;
@property NSTableViewColumnAutoresizingStyle columnAutoresizingStyle;
@property NSTableViewStyle style;
@property NSSize intercellSpacing;
@property(copy) NSColor* backgroundColor;
@property BOOL allowsMultipleSelection;
@property SEL doubleAction;
@property(readonly) NSInteger clickedRow;
@property(readonly) NSInteger selectedRow;
@property(readonly) NSInteger numberOfSelectedRows;
@property(readonly, copy) NSIndexSet* selectedRowIndexes;
- (void)addTableColumn:(NSTableColumn*)column;
- (void)sizeLastColumnToFit;
- (void)reloadData;
- (void)noteHeightOfRowsWithIndexesChanged:(NSIndexSet*)rows;
- (void)selectRowIndexes:(NSIndexSet*)rows byExtendingSelection:(BOOL)extend;
- (void)scrollRowToVisible:(NSInteger)row;
@end

@interface NSVisualEffectView : NSView
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@property(strong) NSImage* maskImage;
@end

@class NSToolbarItem, NSToolbar;

@protocol NSToolbarDelegate <NSObject>
@optional
- (NSToolbarItem*)toolbar:(NSToolbar*)toolbar
        itemForItemIdentifier:(NSToolbarItemIdentifier)identifier
    willBeInsertedIntoToolbar:(BOOL)flag;
- (NSArray<NSToolbarItemIdentifier>*)toolbarDefaultItemIdentifiers:(NSToolbar*)toolbar;
- (NSArray<NSToolbarItemIdentifier>*)toolbarAllowedItemIdentifiers:(NSToolbar*)toolbar;
- (NSArray<NSToolbarItemIdentifier>*)toolbarSelectableItemIdentifiers:(NSToolbar*)toolbar;
@end

@interface NSToolbarItem : NSObject
@property(copy) NSString* label;
@property(strong) NSImage* image;
@property NSInteger tag;
@property(weak) id target;
@property SEL action;
- (instancetype)initWithItemIdentifier:(NSToolbarItemIdentifier)identifier;
@end

@interface NSToolbar : NSObject
@property(weak) id<NSToolbarDelegate> delegate;
@property NSToolbarDisplayMode displayMode;
@property BOOL allowsUserCustomization;
@property(copy) NSToolbarItemIdentifier selectedItemIdentifier;
- (instancetype)initWithIdentifier:(NSToolbarIdentifier)identifier;
@end

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowDidEndLiveResize:(NSNotification*)notification;
- (BOOL)windowShouldClose:(NSWindow*)sender;
- (void)windowWillClose:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder
@property(readonly, strong) NSScreen* screen;
@property(copy) NSString* accessibilityTitle;
@property(weak) id<NSWindowDelegate> delegate;
@property(copy) NSString* title;
@property(strong) NSView* contentView;
@property(readonly) NSRect frame;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly, getter=isKeyWindow) BOOL keyWindow;
@property(readonly, getter=isOnActiveSpace) BOOL onActiveSpace;
@property NSWindowLevel level;
@property NSWindowCollectionBehavior collectionBehavior;
@property NSWindowTabbingMode tabbingMode;
@property(strong) NSToolbar* toolbar;
@property NSWindowToolbarStyle toolbarStyle;
@property NSSize contentMinSize;
@property NSSize contentMaxSize;
@property NSWindowAnimationBehavior animationBehavior;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(getter=isRestorable) BOOL restorable;
@property(getter=isOpaque) BOOL opaque;
@property(copy) NSColor* backgroundColor;
@property BOOL hasShadow;
@property CGFloat alphaValue;
@property BOOL ignoresMouseEvents;
@property BOOL hidesOnDeactivate;
@property BOOL acceptsMouseMovedEvents;
@property BOOL autorecalculatesKeyViewLoop;
- (BOOL)canBecomeKeyWindow;
- (BOOL)canBecomeMainWindow;
@property(readonly, weak) NSResponder* firstResponder;
- (BOOL)makeFirstResponder:(NSResponder*)responder;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer;
- (void)makeKeyWindow;
- (void)makeKeyAndOrderFront:(id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(id)sender;
- (void)center;
- (BOOL)setFrameUsingName:(NSString*)name;
- (BOOL)setFrameAutosaveName:(NSString*)name;
- (void)setFrame:(NSRect)frame display:(BOOL)display;
- (void)setContentSize:(NSSize)size;
- (void)setFrameTopLeftPoint:(NSPoint)point;
- (void)invalidateShadow;
- (NSPoint)convertPointToScreen:(NSPoint)point;
- (void)performClose:(id)sender;
- (void)performMiniaturize:(id)sender;
@end

@interface NSPanel : NSWindow
@end

@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application;
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)flag;
- (void)application:(NSApplication*)application openURLs:(NSArray<NSURL*>*)urls;
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) NSApplication* sharedApplication;
@property(weak) id<NSApplicationDelegate> delegate;
@property(strong) NSMenu* mainMenu;
@property(strong) NSMenu* windowsMenu;
@property(strong) NSMenu* helpMenu;
@property(strong) NSImage* applicationIconImage;
@property(readonly, weak) NSWindow* keyWindow;
@property(readonly, copy) NSArray<NSWindow*>* windows;
@property(readonly, strong) NSEvent* currentEvent;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activate;
- (void)finishLaunching;
- (void)run;
- (NSEvent*)nextEventMatchingMask:(NSEventMask)mask
                        untilDate:(NSDate*)expiration
                           inMode:(NSRunLoopMode)mode
                          dequeue:(BOOL)deqFlag;
- (void)sendEvent:(NSEvent*)event;
- (void)terminate:(id)sender;
@end

@interface NSSavePanel : NSPanel
@property(readonly, copy) NSURL* URL;
@property(copy) NSArray<UTType*>* allowedContentTypes;
@property(copy) NSString* message;
@property(copy) NSString* nameFieldStringValue;
+ (NSSavePanel*)savePanel;
- (void)beginWithCompletionHandler:(void (^)(NSModalResponse))handler;
@end

@interface NSOpenPanel : NSSavePanel
+ (NSOpenPanel*)openPanel;
@end

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@end

@interface NSRunningApplication : NSObject
@property(readonly) pid_t processIdentifier;
@property(readonly, copy) NSString* bundleIdentifier;
@property(readonly, copy) NSURL* bundleURL;
@property(readonly, copy) NSString* localizedName;
@property(readonly, strong) NSImage* icon;
+ (instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:(NSString*)bundleIdentifier;
- (BOOL)terminate;
@end

@interface NSWorkspaceOpenConfiguration : NSObject
@property BOOL createsNewApplicationInstance;
+ (instancetype)configuration;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@property(readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property(readonly, getter=isVoiceOverEnabled) BOOL voiceOverEnabled;
- (BOOL)openURL:(NSURL*)url;
- (void)openURLs:(NSArray<NSURL*>*)urls
    withApplicationAtURL:(NSURL*)application
           configuration:(NSWorkspaceOpenConfiguration*)configuration
       completionHandler:(void (^)(NSRunningApplication*, NSError*))handler;
- (void)openApplicationAtURL:(NSURL*)application
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))handler;
- (NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
- (NSImage*)iconForFile:(NSString*)path;
@end

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@property(readonly) NSEdgeInsets safeAreaInsets;
@property(readonly) NSRect auxiliaryTopLeftArea;
@property(readonly) NSRect auxiliaryTopRightArea;
@end

@interface NSStatusBarButton : NSButton
@end

@interface NSStatusItem : NSObject
@property(readonly, strong) NSStatusBarButton* button;
@property(strong) NSMenu* menu;
@property(copy) NSStatusItemAutosaveName autosaveName;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
@property(readonly) CGFloat thickness;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

#ifdef __cplusplus
extern "C" {
#endif

extern NSAccessibilityNotificationUserInfoKey const NSAccessibilityAnnouncementKey;
extern NSAccessibilityNotificationName const NSAccessibilityAnnouncementRequestedNotification;
extern NSAccessibilityNotificationUserInfoKey const NSAccessibilityPriorityKey;
extern NSAccessibilityRole const NSAccessibilityGroupRole;
extern NSAccessibilityRole const NSAccessibilityImageRole;
extern NSAppearanceName const NSAppearanceNameAqua;
extern NSAppearanceName const NSAppearanceNameDarkAqua;
extern const NSFontWeight NSFontWeightBold;
extern const NSFontWeight NSFontWeightRegular;
extern const NSFontWeight NSFontWeightSemibold;
extern NSImageName const NSImageNameApplicationIcon;
extern NSPasteboardType const NSPasteboardTypeString;
extern NSNotificationName const NSApplicationDidChangeScreenParametersNotification;
extern NSNotificationName const NSWorkspaceActiveSpaceDidChangeNotification;
extern NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
extern NSNotificationName const NSWorkspaceDidLaunchApplicationNotification;
extern NSNotificationName const NSWorkspaceDidTerminateApplicationNotification;
extern NSNotificationName const NSWorkspaceDidWakeNotification;
extern NSNotificationName const NSWorkspaceScreensDidSleepNotification;
extern NSNotificationName const NSWorkspaceScreensDidWakeNotification;
extern NSNotificationName const NSWorkspaceSessionDidBecomeActiveNotification;
extern NSNotificationName const NSWorkspaceSessionDidResignActiveNotification;
extern NSString* const NSWorkspaceApplicationKey;

void NSAccessibilityPostNotificationWithUserInfo(id element, NSAccessibilityNotificationName name,
                                                 NSDictionary* info);

#ifdef __cplusplus
}
#endif
