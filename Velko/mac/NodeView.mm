#import "Velko/mac/NodeView.h"

#include "Velko/View/Tree.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// Gives way when there is no room at all, instead of raising a complaint.
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
    // A stack that takes a view out to put it elsewhere ends the constraints between them.
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
    const auto* picker = std::get_if<view::Picker>(&node.content);
    const bool isSegmented = picker != nullptr && picker->style == view::Picker::Style::segmented;
    return isSegmented ? std::variant_size_v<view::Content> : node.content.index();
}

}  // namespace velko
