#pragma once

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

#include "Velko/View/Node.h"
#import "Velko/mac/TreeViews.h"

namespace velko {

/// A row of a list.
struct ListRow {
    std::string id;
    std::string words;  ///< what VoiceOver says, and what the user types to find it
    bool canBeSelected = true;
    NSView* view = nil;
};

}  // namespace velko

/// A table with one column and no head. Its rows keep their views when they move.
@interface VLKListView : NSTableView <NSTableViewDataSource, NSTableViewDelegate, NSMenuDelegate>
@property(nonatomic, weak) id<VLKTreeActions> treeActions;
/// Whether a double click and Return do something.
@property(nonatomic) BOOL activates;
@property(nonatomic) BOOL hasMenu;
@property(nonatomic) BOOL isUsable;
- (void)setUp;
/// Shows these rows, with exactly those selected. A row that becomes selected comes into sight.
- (void)show:(std::vector<velko::ListRow>)rows selected:(const velko::view::RowIDs&)selected;
/// The height of all rows.
- (CGFloat)wholeHeight;
@end
