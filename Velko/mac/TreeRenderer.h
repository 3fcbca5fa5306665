#pragma once

#import <AppKit/AppKit.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Velko/View/Node.h"
#import "Velko/mac/NodeView.h"

namespace velko {

/// Turns one tree after another into native views. A node that comes again with the same id and kind keeps
/// its view, even in another place of the tree. Main thread.
class TreeRenderer final {
 public:
    explicit TreeRenderer(const RenderContext& context) : context_(context) {}

    /// Makes the views for a tree, or changes those of the tree before. Returns the outermost view.
    [[nodiscard]] NSView* render(const view::Node& root);

    /// The labels in the last tree whose texts can break into lines.
    [[nodiscard]] std::vector<NSTextField*> wrappingLabels() const;

 private:
    struct Known {
        std::size_t kind = 0;
        NodeViewRef view;
    };

    [[nodiscard]] NodeView& render(const view::Node& node, const std::string& place);
    void renderChildren(NodeView& view, const view::Node& node, const std::string& place);

    RenderContext context_;
    std::map<std::string, Known> known_;
    std::set<std::string> seen_;
};

}  // namespace velko
