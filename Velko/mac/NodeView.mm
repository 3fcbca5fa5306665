#import "Velko/mac/NodeView.h"

#include "Velko/View/Tree.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// Gives way when there is no room at all. A required constraint would make the system complain.
constexpr NSLayoutPriority almostRequired = 999;

}  // namespace

NodeView::NodeView(NSView* outer, NSView* control) : outer_(outer), control_(control) {
    outer_.translatesAutoresizingMaskIntoConstraints = NO;
}

void NodeView::show(const view::Node& node) {
    update(node);
    control_.identifier = native(node.id);
    outer_.toolTip = node.help.empty() ? nil : native(node.help);
    speak(node);
    if (width_ == nil && node.width > 0) {
        width_ = [outer_.widthAnchor constraintEqualToConstant:node.width];
        width_.priority = almostRequired;
    }
    width_.constant = node.width;
    width_.active = node.width > 0;
    if (height_ == nil && node.minHeight > 0) {
        height_ = [outer_.heightAnchor constraintGreaterThanOrEqualToConstant:node.minHeight];
        height_.priority = almostRequired;
    }
    height_.constant = node.minHeight;
    height_.active = node.minHeight > 0;
}

void NodeView::speak(const view::Node& node) {
    const std::string words = view::spoken(node);
    control_.accessibilityLabel = words.empty() ? nil : native(words);
}

void NodeView::arrange(const std::vector<Child>& /*children*/) {}

void NodeView::stretch(NSStackView* stack, bool stretches, double padding) {
    // A stack that moves a view to another place ends the constraints between the view and itself.
    if (stretches && stretch_.active && stretchedIn_ == stack && padding_ == padding) {
        return;
    }
    stretch_.active = NO;
    stretch_ = nil;
    if (!stretches) {
        return;
    }
    const bool isRow = stack.orientation == NSUserInterfaceLayoutOrientationHorizontal;
    NSLayoutDimension* mine = isRow ? outer_.heightAnchor : outer_.widthAnchor;
    NSLayoutDimension* whole = isRow ? stack.heightAnchor : stack.widthAnchor;
    stretch_ = [mine constraintEqualToAnchor:whole constant:-2 * padding];
    stretch_.priority = almostRequired;
    stretch_.active = YES;
    stretchedIn_ = stack;
    padding_ = padding;
}

std::size_t kindOf(const view::Node& node) {
    // Some kinds of node are two kinds of view: the second one gets a number of its own.
    constexpr std::size_t second = std::variant_size_v<view::Content>;
    const auto* picker = std::get_if<view::Picker>(&node.content);
    const auto* toggle = std::get_if<view::Toggle>(&node.content);
    const bool isSecond = (picker != nullptr && picker->style == view::Picker::Style::segmented) ||
                          (toggle != nullptr && toggle->style == view::Toggle::Style::checkbox);
    return node.content.index() + (isSecond ? second : 0);
}

}  // namespace velko

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

namespace velko::TitledControls {

NSTextField* makeTitle() {
    NSTextField* title = [NSTextField labelWithString:@""];
    [title setContentHuggingPriority:1 forOrientation:NSLayoutConstraintOrientationHorizontal];
    return title;
}

NSStackView* make(NSTextField* title, NSView* control) {
    constexpr double spacing = 6;
    NSStackView* stack =
        StackViews::make(NSUserInterfaceLayoutOrientationHorizontal, NSLayoutAttributeCenterY, spacing);
    NSMutableArray<NSView*>* views = [NSMutableArray arrayWithCapacity:2];
    [views addObject:title];
    [views addObject:control];
    StackViews::place(stack, views);
    [control setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                        forOrientation:NSLayoutConstraintOrientationHorizontal];
    return stack;
}

void setTitle(NSTextField* title, const std::string& words) {
    title.stringValue = native(words);
    title.hidden = words.empty();
}

}  // namespace velko::TitledControls
