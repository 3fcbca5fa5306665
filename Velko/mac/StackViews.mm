#import "Velko/mac/StackViews.h"

namespace velko::StackViews {

NSStackView* make(NSUserInterfaceLayoutOrientation orientation, NSLayoutAttribute alignment, double spacing) {
    NSStackView* stack = [[NSStackView alloc] initWithFrame:NSRect{}];
    stack.translatesAutoresizingMaskIntoConstraints = NO;
    stack.orientation = orientation;
    stack.alignment = alignment;
    stack.distribution = NSStackViewDistributionFill;
    stack.spacing = spacing;
    stack.detachesHiddenViews = YES;
    return stack;
}

void place(NSStackView* stack, NSArray<NSView*>* views) {
    NSArray<NSView*>* before = stack.arrangedSubviews;
    for (NSView* view in before) {
        if (![views containsObject:view]) {
            [view removeFromSuperview];
        }
    }
    NSUInteger index = 0;
    for (NSView* view in views) {
        NSArray<NSView*>* now = stack.arrangedSubviews;
        if (index >= now.count || now[index] != view) {
            if (view.superview != stack) {
                [view removeFromSuperview];
            }
            [stack insertArrangedSubview:view atIndex:static_cast<NSInteger>(index)];
        }
        ++index;
    }
}

void place(NSStackView* stack, const std::vector<NodeView::Child>& children, double padding) {
    NSMutableArray<NSView*>* views = [NSMutableArray arrayWithCapacity:children.size()];
    for (const NodeView::Child& child : children) {
        [views addObject:child.node->view()];
    }
    place(stack, views);
    for (const NodeView::Child& child : children) {
        child.node->stretch(stack, child.stretches, padding);
    }
}

void pin(NSView* view, NSView* container, double inset) {
    [view.topAnchor constraintEqualToAnchor:container.topAnchor constant:inset].active = YES;
    [view.leadingAnchor constraintEqualToAnchor:container.leadingAnchor constant:inset].active = YES;
    [container.bottomAnchor constraintEqualToAnchor:view.bottomAnchor constant:inset].active = YES;
    [container.trailingAnchor constraintEqualToAnchor:view.trailingAnchor constant:inset].active = YES;
}

}  // namespace velko::StackViews
