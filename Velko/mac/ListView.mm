#import "Velko/mac/ListView.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#import "Velko/mac/NodeView.h"
#include "VelkoEngine/mac/Conversions.h"

namespace {

constexpr CGFloat rowInset = 5;
constexpr CGFloat leastRowHeight = 24;

bool areSameRows(const std::vector<velko::ListRow>& left, const std::vector<velko::ListRow>& right) {
    return std::ranges::equal(left, right, [](const velko::ListRow& one, const velko::ListRow& other) {
        return one.id == other.id && one.view == other.view;
    });
}

}  // namespace

/// A row whose selection is pale at all times: its controls stay legible.
@interface VLKListRowView : NSTableRowView
@end

@implementation VLKListRowView

- (BOOL)isEmphasized {
    return NO;
}

@end

@implementation VLKListView {
    std::vector<velko::ListRow> _rows;
    std::vector<CGFloat> _heights;
    BOOL _isShowing;
}

- (void)setUp {
    NSTableColumn* column = [[NSTableColumn alloc] initWithIdentifier:@"row"];
    [self addTableColumn:column];
    self.headerView = nil;
    self.style = NSTableViewStyleInset;
    self.columnAutoresizingStyle = NSTableViewUniformColumnAutoresizingStyle;
    self.intercellSpacing = NSSize{.width = 0, .height = 0};
    self.backgroundColor = [NSColor clearColor];
    self.dataSource = self;
    self.delegate = self;
    self.target = self;
    self.doubleAction = @selector(doubleClicked:);
}

- (void)show:(std::vector<velko::ListRow>)rows selected:(const velko::view::RowIDs&)selected {
    _isShowing = YES;
    const bool isSame = areSameRows(rows, _rows);
    _rows = std::move(rows);
    std::vector<CGFloat> heights;
    heights.reserve(_rows.size());
    for (const velko::ListRow& row : _rows) {
        heights.push_back(std::max(row.view.fittingSize.height + 2 * rowInset, leastRowHeight));
    }
    const bool isAsHigh = heights == _heights;
    _heights = std::move(heights);
    if (!isSame) {
        [self reloadKeepingFocus];
    } else if (!isAsHigh) {
        NSMutableIndexSet* all = [NSMutableIndexSet indexSet];
        for (std::size_t index = 0; index < _rows.size(); ++index) {
            [all addIndex:index];
        }
        [self noteHeightOfRowsWithIndexesChanged:all];
    }
    [self select:selected];
    _isShowing = NO;
}

/// A reload takes the views of all rows away for a moment.
- (void)reloadKeepingFocus {
    NSWindow* window = self.window;
    NSResponder* before = window.firstResponder;
    [self reloadData];
    [self sizeLastColumnToFit];
    if (before != nil && window.firstResponder != before) {
        [window makeFirstResponder:before];
    }
}

- (void)select:(const velko::view::RowIDs&)selected {
    NSMutableIndexSet* indexes = [NSMutableIndexSet indexSet];
    NSInteger first = -1;
    for (std::size_t index = 0; index < _rows.size(); ++index) {
        if (selected.contains(_rows[index].id)) {
            [indexes addIndex:index];
            first = first < 0 ? static_cast<NSInteger>(index) : first;
        }
    }
    if ([indexes isEqualToIndexSet:self.selectedRowIndexes]) {
        return;
    }
    [self selectRowIndexes:indexes byExtendingSelection:NO];
    if (first >= 0) {
        [self scrollRowToVisible:first];
    }
}

- (CGFloat)wholeHeight {
    CGFloat sum = 0;
    for (const CGFloat height : _heights) {
        sum += height;
    }
    return sum;
}

- (const velko::ListRow*)rowAt:(NSInteger)index {
    return index >= 0 && static_cast<std::size_t>(index) < _rows.size()
               ? &_rows[static_cast<std::size_t>(index)]
               : nullptr;
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView {
    return static_cast<NSInteger>(_rows.size());
}

- (NSView*)tableView:(NSTableView*)tableView viewForTableColumn:(NSTableColumn*)column row:(NSInteger)row {
    const velko::ListRow* shown = [self rowAt:row];
    if (shown == nullptr) {
        return nil;
    }
    // The table sets the frame of this view. The row's own view lays itself out in it.
    NSView* cell = [[NSView alloc] initWithFrame:NSRect{}];
    [shown->view removeFromSuperview];
    [cell addSubview:shown->view];
    velko::StackViews::pin(shown->view, cell, rowInset);
    return cell;
}

- (NSTableRowView*)tableView:(NSTableView*)tableView rowViewForRow:(NSInteger)row {
    VLKListRowView* view = [[VLKListRowView alloc] initWithFrame:NSRect{}];
    const velko::ListRow* shown = [self rowAt:row];
    view.accessibilityLabel = shown == nullptr ? nil : velko::native(shown->words);
    return view;
}

- (CGFloat)tableView:(NSTableView*)tableView heightOfRow:(NSInteger)row {
    return [self rowAt:row] == nullptr ? leastRowHeight : _heights[static_cast<std::size_t>(row)];
}

- (BOOL)tableView:(NSTableView*)tableView shouldSelectRow:(NSInteger)row {
    const velko::ListRow* shown = [self rowAt:row];
    return self.isUsable && shown != nullptr && shown->canBeSelected;
}

- (NSString*)tableView:(NSTableView*)tableView
    typeSelectStringForTableColumn:(NSTableColumn*)column
                               row:(NSInteger)row {
    const velko::ListRow* shown = [self rowAt:row];
    return shown == nullptr || !shown->canBeSelected ? nil : velko::native(shown->words);
}

- (void)tableViewSelectionDidChange:(NSNotification*)notification {
    if (_isShowing) {
        return;
    }
    NSIndexSet* indexes = self.selectedRowIndexes;
    velko::view::Selected selected;
    for (std::size_t index = 0; index < _rows.size(); ++index) {
        if ([indexes containsIndex:index]) {
            selected.rows.insert(_rows[index].id);
        }
    }
    [self.treeActions perform:selected on:self];
}

- (void)activate:(NSInteger)index {
    const velko::ListRow* row = [self rowAt:index];
    if (self.activates && row != nullptr) {
        [self.treeActions perform:velko::view::Activated{.row = row->id} on:self];
    }
}

- (void)doubleClicked:(id)sender {
    [self activate:self.clickedRow];
}

- (void)keyDown:(NSEvent*)event {
    const bool isEnter = [event.charactersIgnoringModifiers isEqualToString:@"\r"];
    if (isEnter && self.activates) {
        // A key that is held down activates only once.
        if (!event.ARepeat && self.numberOfSelectedRows == 1) {
            [self activate:self.selectedRow];
        }
        return;
    }
    [super keyDown:event];
}

- (BOOL)acceptsFirstResponder {
    return self.isUsable;
}

/// VoiceOver finds the menu by this property as well.
- (void)setHasMenu:(BOOL)hasMenu {
    if (hasMenu == _hasMenu) {
        return;
    }
    _hasMenu = hasMenu;
    self.menu = hasMenu ? velko::menuFilledBy(self) : nil;
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
    const velko::ListRow* row = [self rowAt:self.clickedRow];
    [self.treeActions fill:menu of:self about:row == nullptr ? @"" : velko::native(row->id)];
}

- (void)menuWillOpen:(NSMenu*)menu {
    [self.treeActions menuWillOpen:menu];
}

- (void)menuDidClose:(NSMenu*)menu {
    [self.treeActions menuDidClose:menu];
}

@end
