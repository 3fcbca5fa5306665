#pragma once

#import <AppKit/AppKit.h>

#import "Velko/mac/NodeView.h"
#import "Velko/mac/StackViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

/// Between children whose node does not say it.
inline constexpr double innerSpacing = 8;

[[nodiscard]] inline NSStackView* makeColumn(double spacing) {
    return StackViews::make(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading, spacing);
}

/// What holds others speaks only when it has words of its own.
class ContainerView : public NodeView {
 protected:
    ContainerView(NSView* outer, NSView* control) : NodeView(outer, control), control_(control) {}

    void speak(const view::Node& node) override {
        if (node.label.empty()) {
            return;
        }
        control_.accessibilityElement = YES;
        control_.accessibilityRole = NSAccessibilityGroupRole;
        control_.accessibilityLabel = native(node.label);
    }

 private:
    NSView* control_;
};

}  // namespace velko
