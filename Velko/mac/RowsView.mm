#include <algorithm>
#include <cstddef>
#include <variant>
#include <vector>

#include "Velko/View/Tree.h"
#import "Velko/mac/ListView.h"
#import "Velko/mac/NodeView.h"

namespace velko {

namespace {

/// Gives way to the window's height, and to nothing else.
constexpr NSLayoutPriority listPriority = 240;

class RowsView final : public NodeView {
 public:
    explicit RowsView(const RenderContext& context)
        : RowsView(context, [[NSScrollView alloc] initWithFrame:NSRect{}],
                   [[VLKListView alloc] initWithFrame:NSRect{}]) {}

    void arrange(const std::vector<Child>& children) override {
        for (std::size_t index = 0; index < std::min(children.size(), rows_.size()); ++index) {
            rows_[index].view = children[index].node->view();
        }
        [list_ show:rows_ selected:selected_];
        const CGFloat wanted = std::min(list_.wholeHeight, limit_);
        height_.constant = wanted;
        highest_.constant = wanted;
        highest_.active = !grows_;
    }

 private:
    RowsView(const RenderContext& context, NSScrollView* scroll, VLKListView* list)
        : NodeView(scroll, list), scroll_(scroll), list_(list) {
        scroll.hasVerticalScroller = YES;
        scroll.autohidesScrollers = YES;
        scroll.documentView = list;
        list.treeActions = context.actions;
        [list setUp];
        height_ = [scroll.heightAnchor constraintEqualToConstant:0];
        height_.priority = listPriority;
        height_.active = YES;
        highest_ = [scroll.heightAnchor constraintLessThanOrEqualToConstant:0];
        highest_.priority = NSLayoutPriorityDefaultHigh;
        [scroll setContentHuggingPriority:1 forOrientation:NSLayoutConstraintOrientationVertical];
    }

    void update(const view::Node& node) override {
        const auto& list = std::get<view::List>(node.content);
        rows_.clear();
        for (const view::Node& row : list.children) {
            rows_.push_back({.id = row.id, .words = view::spoken(row), .canBeSelected = row.isEnabled});
        }
        selected_ = list.selected;
        limit_ = list.height;
        grows_ = list.grows;
        // One that is a part of a page has a frame, so that it does not look cut off at its last row.
        scroll_.borderType = grows_ ? NSLineBorder : NSNoBorder;
        scroll_.drawsBackground = grows_;
        list_.allowsMultipleSelection = list.selection == view::List::Selection::several;
        list_.activates = list.activate != nullptr && node.isEnabled;
        list_.hasMenu = list.menu != nullptr;
        list_.isUsable = node.isEnabled;
    }

    NSScrollView* scroll_;
    VLKListView* list_;
    std::vector<ListRow> rows_;
    view::RowIDs selected_;
    CGFloat limit_ = 0;
    bool grows_ = false;
    NSLayoutConstraint* height_;
    NSLayoutConstraint* highest_;
};

}  // namespace

NodeViewRef makeView(const view::List& /*content*/, const RenderContext& context) {
    return std::make_unique<RowsView>(context);
}

}  // namespace velko
