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

/// Turns trees into native views, one after another: a node that is there again, with its id and kind, keeps
/// its view, wherever in the tree it has got to. Main thread.
class TreeRenderer final {
 public:
    explicit TreeRenderer(const RenderContext& context) : context_(context) {}

    /// Makes the views for a tree, or changes those of the last one; the outermost.
    [[nodiscard]] NSView* render(const view::Node& root);

    /// Of the last tree.
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
