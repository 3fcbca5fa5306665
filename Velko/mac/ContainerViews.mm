#include <variant>

#include "Velko/View/Tree.h"
#import "Velko/mac/ContainerView.h"
#import "Velko/mac/StackViews.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

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

}  // namespace velko
