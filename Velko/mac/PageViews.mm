#include <variant>

#import "Velko/mac/ContainerView.h"
#import "Velko/mac/NewIn27.h"
#import "Velko/mac/TreeViews.h"

namespace velko {

namespace {

constexpr double tabsSpacing = 16;

class ScrollingView final : public ContainerView {
 public:
    ScrollingView() : ScrollingView([[NSScrollView alloc] initWithFrame:NSRect{}]) {}

    void arrange(const std::vector<Child>& children) override { StackViews::place(column_, children, 0); }

 private:
    explicit ScrollingView(NSScrollView* scroll)
        : ContainerView(scroll, scroll), column_(makeColumn(innerSpacing)) {
        scroll.drawsBackground = NO;
        scroll.borderType = NSNoBorder;
        scroll.hasVerticalScroller = YES;
        scroll.autohidesScrollers = YES;
        scroll.automaticallyAdjustsContentInsets = NO;
        VLKDocumentView* document = [[VLKDocumentView alloc] initWithFrame:NSRect{}];
        document.translatesAutoresizingMaskIntoConstraints = NO;
        [document addSubview:column_];
        StackViews::pin(column_, document, 0);
        scroll.documentView = document;
        NSView* clip = scroll.contentView;
        [document.topAnchor constraintEqualToAnchor:clip.topAnchor constant:0].active = YES;
        [document.leadingAnchor constraintEqualToAnchor:clip.leadingAnchor constant:0].active = YES;
        // A scroller that always shows, as some users have it, takes its room from what is shown.
        hold([document.widthAnchor constraintEqualToAnchor:clip.widthAnchor constant:0],
             NSLayoutPriorityDefaultHigh);
        // As high as what it shows, up to its limit.
        hold([scroll.heightAnchor constraintEqualToAnchor:document.heightAnchor constant:0],
             NSLayoutPriorityDefaultLow);
        limit_ = [scroll.heightAnchor constraintLessThanOrEqualToConstant:0];
        limit_.active = YES;
    }

    static void hold(NSLayoutConstraint* constraint, NSLayoutPriority priority) {
        constraint.priority = priority;
        constraint.active = YES;
    }

    void update(const view::Node& node) override {
        limit_.constant = std::get<view::Scroll>(node.content).height;
    }

    NSStackView* column_;
    NSLayoutConstraint* limit_;
};

class PagesView final : public ContainerView {
 public:
    explicit PagesView(const RenderContext& context)
        : PagesView(context,
                    StackViews::make(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeCenterX,
                                     tabsSpacing),
                    [[NSSegmentedControl alloc] initWithFrame:NSRect{}]) {}

    void arrange(const std::vector<Child>& children) override { StackViews::place(page_, children, 0); }

 private:
    PagesView(const RenderContext& context, NSStackView* outer, NSSegmentedControl* tabs)
        : ContainerView(outer, tabs), tabs_(tabs), page_(makeColumn(innerSpacing)) {
        tabs.trackingMode = NSSegmentSwitchTrackingSelectOne;
        NewIn27::actAsTabs(tabs);
        tabs.target = context.actions;
        tabs.action = @selector(segmentPicked:);
        [outer addArrangedSubview:tabs];
        [outer addArrangedSubview:page_];
        [page_.widthAnchor constraintEqualToAnchor:outer.widthAnchor constant:0].active = YES;
    }

    void update(const view::Node& node) override {
        const auto& pages = std::get<view::Pages>(node.content);
        if (pages.tabs != shown_) {
            shown_ = pages.tabs;
            tabs_.segmentCount = static_cast<NSInteger>(shown_.size());
            for (std::size_t index = 0; index < shown_.size(); ++index) {
                [tabs_ setLabel:native(shown_[index].title) forSegment:static_cast<NSInteger>(index)];
                [tabs_ setImage:symbolImage(shown_[index].symbol) forSegment:static_cast<NSInteger>(index)];
            }
        }
        tabs_.selectedSegment = pages.selected < shown_.size() ? static_cast<NSInteger>(pages.selected) : -1;
        tabs_.enabled = node.isEnabled;
    }

    void speak(const view::Node& node) override {
        tabs_.accessibilityLabel = node.label.empty() ? nil : native(node.label);
    }

    NSSegmentedControl* tabs_;
    NSStackView* page_;
    std::vector<view::Pages::Tab> shown_;
};

}  // namespace

NodeViewRef makeView(const view::Scroll& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<ScrollingView>();
}
NodeViewRef makeView(const view::Pages& /*content*/, const RenderContext& context) {
    return std::make_unique<PagesView>(context);
}

}  // namespace velko
