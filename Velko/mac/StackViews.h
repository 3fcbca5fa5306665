#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#import "Velko/mac/NodeView.h"

/// Stacks as Velko uses them: filled, never hiding what does not fit.
namespace velko::StackViews {

[[nodiscard]] NSStackView* make(NSUserInterfaceLayoutOrientation orientation, NSLayoutAttribute alignment,
                                double spacing);

/// Puts exactly these views into the stack, in that order; what is there already stays as it is.
void place(NSStackView* stack, NSArray<NSView*>* views);

/// The same for nodes, each stretched as it says.
void place(NSStackView* stack, const std::vector<NodeView::Child>& children, double padding);

/// Holds a view at that distance within another one that has been given it.
void pin(NSView* view, NSView* container, double inset);

}  // namespace velko::StackViews
