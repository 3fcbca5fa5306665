#import <AppKit/AppKit.h>

#include <variant>

#include "Velko/View/Tree.h"
#import "Velko/mac/NewIn27.h"
#import "Velko/mac/NodeView.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// Points between children when their node does not say it.
constexpr double innerSpacing = 8;

NSStackView* makeColumn(double spacing) {
    return StackViews::make(NSUserInterfaceLayoutOrientationVertical, NSLayoutAttributeLeading, spacing);
}

/// A view that contains others. VoiceOver speaks of it only if its node has a label.
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

constexpr double groupInset = 10;
constexpr double titleSpacing = 4;

NSLayoutAttribute alignment(const view::Stack& stack) {
    const bool isRow = stack.axis == view::Stack::Axis::row;
    if (stack.alignment == view::Stack::Alignment::centre) {
        return isRow ? NSLayoutAttributeCenterY : NSLayoutAttributeCenterX;
    }
    return isRow ? NSLayoutAttributeTop : NSLayoutAttributeLeading;
}

class RowOrColumnView final : public ContainerView {
 public:
    RowOrColumnView() : RowOrColumnView(makeColumn(innerSpacing)) {}

    void arrange(const std::vector<Child>& children) override {
        StackViews::place(stack_, children, padding_);
    }

 private:
    explicit RowOrColumnView(NSStackView* stack) : ContainerView(stack, stack), stack_(stack) {}

    void update(const view::Node& node) override {
        const auto& stack = std::get<view::Stack>(node.content);
        stack_.orientation = stack.axis == view::Stack::Axis::row ? NSUserInterfaceLayoutOrientationHorizontal
                                                                  : NSUserInterfaceLayoutOrientationVertical;
        stack_.alignment = alignment(stack);
        stack_.spacing = stack.spacing;
        padding_ = stack.padding;
        stack_.edgeInsets = {.top = padding_, .left = padding_, .bottom = padding_, .right = padding_};
    }

    NSStackView* stack_;
    double padding_ = 0;
};

class FramedView final : public ContainerView {
 public:
    explicit FramedView(const RenderContext& context)
        : FramedView(context, makeColumn(titleSpacing), [NSTextField labelWithString:@""],
                     [[VLKGroupView alloc] initWithFrame:NSRect{}]) {}

    void arrange(const std::vector<Child>& children) override { StackViews::place(column_, children, 0); }

 private:
    FramedView(const RenderContext& context, NSStackView* outer, NSTextField* title, VLKGroupView* group)
        : ContainerView(outer, group), title_(title), group_(group), column_(makeColumn(innerSpacing)) {
        title.font = [NSFont systemFontOfSize:[NSFont systemFontSize] weight:NSFontWeightSemibold];
        group.translatesAutoresizingMaskIntoConstraints = NO;
        group.treeActions = context.actions;
        [group addSubview:column_];
        StackViews::pin(column_, group, groupInset);
        [outer addArrangedSubview:title];
        [outer addArrangedSubview:group];
        [group.widthAnchor constraintEqualToAnchor:outer.widthAnchor constant:0].active = YES;
    }

    void update(const view::Node& node) override {
        const auto& group = std::get<view::Group>(node.content);
        title_.stringValue = native(group.title);
        title_.hidden = group.title.empty();
        group_.takesApps = group.drop != nullptr && node.isEnabled;
    }

    void speak(const view::Node& node) override {
        group_.accessibilityElement = YES;
        group_.accessibilityRole = NSAccessibilityGroupRole;
        group_.accessibilityLabel = native(view::spoken(node));
    }

    NSTextField* title_;
    VLKGroupView* group_;
    NSStackView* column_;
};

}  // namespace

NodeViewRef makeView(const view::Stack& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<RowOrColumnView>();
}
NodeViewRef makeView(const view::Group& /*content*/, const RenderContext& context) {
    return std::make_unique<FramedView>(context);
}

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
        // Some users have scrollers that are always visible and take room from the content.
        hold([document.widthAnchor constraintEqualToAnchor:clip.widthAnchor constant:0],
             NSLayoutPriorityDefaultHigh);
        // It is as high as its content, up to its limit.
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

/// A title with a triangle. What it shows is a little farther to the right.
class DisclosureView final : public ContainerView {
 public:
    explicit DisclosureView(const RenderContext& context)
        : DisclosureView(context, makeColumn(titleSpacing), [[VLKTreeButton alloc] initWithFrame:NSRect{}],
                         [[VLKTreeButton alloc] initWithFrame:NSRect{}]) {}

    void arrange(const std::vector<Child>& children) override {
        content_.hidden = children.empty();
        StackViews::place(content_, children, 0);
    }

 private:
    DisclosureView(const RenderContext& context, NSStackView* outer, VLKTreeButton* triangle,
                   VLKTreeButton* title)
        : ContainerView(outer, triangle),
          triangle_(triangle),
          title_(title),
          content_(makeColumn(innerSpacing)) {
        constexpr double indent = 18;
        [triangle setButtonType:NSButtonTypePushOnPushOff];
        triangle.bezelStyle = NSBezelStyleDisclosure;
        triangle.title = @"";
        title.bordered = NO;
        title.accessibilityElement = NO;  // the triangle says it
        NSStackView* head = StackViews::make(NSUserInterfaceLayoutOrientationHorizontal,
                                             NSLayoutAttributeCenterY, titleSpacing);
        for (VLKTreeButton* button : {triangle, title}) {
            button.target = context.actions;
            button.action = @selector(disclosed:);
            [head addArrangedSubview:button];
        }
        content_.edgeInsets = {.top = 0, .left = indent, .bottom = 0, .right = 0};
        [outer addArrangedSubview:head];
        [outer addArrangedSubview:content_];
        [content_.widthAnchor constraintEqualToAnchor:outer.widthAnchor constant:0].active = YES;
    }

    void update(const view::Node& node) override {
        const auto& disclosure = std::get<view::Disclosure>(node.content);
        triangle_.state = disclosure.isOpen ? NSControlStateValueOn : NSControlStateValueOff;
        triangle_.enabled = node.isEnabled;
        title_.title = native(disclosure.title);
        title_.enabled = node.isEnabled;
        title_.identifier = native(node.id);
    }

    void speak(const view::Node& node) override { triangle_.accessibilityLabel = native(view::spoken(node)); }

    VLKTreeButton* triangle_;
    VLKTreeButton* title_;
    NSStackView* content_;
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
        tabs_.hidden = pages.style == view::Pages::Style::toolbar;
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
NodeViewRef makeView(const view::Disclosure& /*content*/, const RenderContext& context) {
    return std::make_unique<DisclosureView>(context);
}
NodeViewRef makeView(const view::Pages& /*content*/, const RenderContext& context) {
    return std::make_unique<PagesView>(context);
}

}  // namespace velko
