#import "Velko/mac/TreeDrawing.h"

#include <algorithm>

#import "Velko/mac/TreeView.h"
#include "VelkoEngine/mac/Conversions.h"

/// What a window would have behind its content.
@interface VLKPaper : NSView
@end

@implementation VLKPaper

- (void)drawRect:(NSRect)dirtyRect {
    [[NSColor windowBackgroundColor] setFill];
    [NSBezierPath fillRect:self.bounds];
}

@end

namespace velko {

namespace {

using LayoutAudit::Measured;

/// The rectangle in which a view's content is aligned, with the origin at the top left of `root`.
Rect placeIn(NSView* root, NSView* view) {
    const NSRect aligned = [view alignmentRectForFrame:view.frame];
    const NSPoint one = [root convertPoint:aligned.origin fromView:view.superview];
    const NSPoint other = [root convertPoint:NSPoint{.x = aligned.origin.x + aligned.size.width,
                                                     .y = aligned.origin.y + aligned.size.height}
                                    fromView:view.superview];
    const double top = std::min(one.y, other.y);
    const double bottom = std::max(one.y, other.y);
    return {.x = std::min(one.x, other.x),
            .y = root.flipped ? top : root.frame.size.height - bottom,
            .width = aligned.size.width,
            .height = bottom - top};
}

Size neededBy(NSView* view, const Rect& place) {
    constexpr CGFloat highest = 100'000;
    if ([view isKindOfClass:[NSTextField class]]) {
        return portable([(NSTextField*)view sizeThatFits:NSSize{.width = place.width, .height = highest}]);
    }
    return [view isKindOfClass:[NSControl class]] ? portable([view intrinsicContentSize]) : Size{};
}

/// Adds the views of nodes, each after the one that contains it.
void measure(NSView* root, NSView* view, std::optional<std::size_t> parent, std::vector<Measured>& found) {
    if (view.hidden) {
        return;
    }
    if (parent && [view isKindOfClass:[NSClipView class]]) {
        found[*parent].clips = true;
    }
    if (view.identifier != nil) {
        const Rect place = placeIn(root, view);
        found.push_back({.id = portable(view.identifier),
                         .parent = parent,
                         .frame = place,
                         .needed = neededBy(view, place),
                         .isAmbiguous = view.hasAmbiguousLayout == YES});
        parent = found.size() - 1;
    }
    for (NSView* child in view.subviews) {
        measure(root, child, parent, found);
    }
}

bool write(NSView* view, const std::filesystem::path& file) {
    NSBitmapImageRep* bitmap = [view bitmapImageRepForCachingDisplayInRect:view.bounds];
    [view cacheDisplayInRect:view.bounds toBitmapImageRep:bitmap];
    NSData* data = [bitmap representationUsingType:NSBitmapImageFileTypePNG
                                        properties:[NSDictionary dictionary]];
    return [data writeToFile:native(file.native()) atomically:YES];
}

}  // namespace

TreeDrawing::TreeDrawing(MainThread& mainThread, AppIcons& icons)
    : paper_([[VLKPaper alloc] initWithFrame:NSRect{}]),
      tree_([[VLKTreeView alloc] initWithMainThread:mainThread icons:icons]) {
    [paper_ addSubview:tree_];
}

std::optional<std::vector<Measured>> TreeDrawing::draw(const view::Node& tree, bool isDark,
                                                       const std::filesystem::path& picture) {
    paper_.appearance =
        [NSAppearance appearanceNamed:isDark ? NSAppearanceNameDarkAqua : NSAppearanceNameAqua];
    [tree_ show:tree];
    const NSSize size = [tree_ fit];
    [paper_ setFrameSize:size];
    [tree_ setFrameSize:size];
    [paper_ layoutSubtreeIfNeeded];
    std::vector<Measured> found;
    measure(tree_, tree_, std::nullopt, found);
    if (!picture.empty() && !write(paper_, picture)) {
        return std::nullopt;
    }
    return found;
}

}  // namespace velko
