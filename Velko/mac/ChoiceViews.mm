#include <variant>

#import "Velko/mac/NodeView.h"
#import "Velko/mac/StackViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr double titleSpacing = 6;

NSTextField* makeTitle() {
    NSTextField* title = [NSTextField labelWithString:@""];
    [title setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                      forOrientation:NSLayoutConstraintOrientationHorizontal];
    return title;
}

/// A control with its title before it.
NSStackView* titled(NSArray<NSView*>* views) {
    NSStackView* stack =
        StackViews::make(NSUserInterfaceLayoutOrientationHorizontal, NSLayoutAttributeCenterY, titleSpacing);
    StackViews::place(stack, views);
    return stack;
}

NSArray<NSView*>* listed(std::initializer_list<NSView*> views) {
    NSMutableArray<NSView*>* list = [NSMutableArray arrayWithCapacity:views.size()];
    for (NSView* view : views) {
        [list addObject:view];
    }
    return list;
}

void setTitle(NSTextField* title, const std::string& words) {
    title.stringValue = native(words);
    title.hidden = words.empty();
}

class PopUpView final : public NodeView {
 public:
    explicit PopUpView(const RenderContext& context)
        : PopUpView(context, makeTitle(), [[NSPopUpButton alloc] initWithFrame:NSRect {} pullsDown:NO]) {}

 private:
    PopUpView(const RenderContext& context, NSTextField* title, NSPopUpButton* popUp)
        : NodeView(titled(listed({title, popUp})), popUp), title_(title), popUp_(popUp) {
        popUp.target = context.actions;
        popUp.action = @selector(picked:);
    }

    void update(const view::Node& node) override {
        const auto& picker = std::get<view::Picker>(node.content);
        setTitle(title_, picker.title);
        // Its menu may be open.
        if (picker.options != options_) {
            options_ = picker.options;
            [popUp_ removeAllItems];
            for (const std::string& option : options_) {
                // The button itself would merge options of the same name.
                [popUp_.menu addItemWithTitle:native(option) action:nil keyEquivalent:@""];
            }
        }
        if (picker.selected < options_.size()) {
            [popUp_ selectItemAtIndex:static_cast<NSInteger>(picker.selected)];
        }
        popUp_.enabled = node.isEnabled;
    }

    NSTextField* title_;
    NSPopUpButton* popUp_;
    std::vector<std::string> options_;
};

class SegmentsView final : public NodeView {
 public:
    explicit SegmentsView(const RenderContext& context)
        : SegmentsView(context, makeTitle(), [[NSSegmentedControl alloc] initWithFrame:NSRect{}]) {}

 private:
    SegmentsView(const RenderContext& context, NSTextField* title, NSSegmentedControl* segments)
        : NodeView(titled(listed({title, segments})), segments), title_(title), segments_(segments) {
        segments.trackingMode = NSSegmentSwitchTrackingSelectOne;
        segments.target = context.actions;
        segments.action = @selector(segmentPicked:);
    }

    void update(const view::Node& node) override {
        const auto& picker = std::get<view::Picker>(node.content);
        setTitle(title_, picker.title);
        segments_.segmentCount = static_cast<NSInteger>(picker.options.size());
        for (std::size_t index = 0; index < picker.options.size(); ++index) {
            [segments_ setLabel:native(picker.options[index]) forSegment:static_cast<NSInteger>(index)];
        }
        segments_.selectedSegment =
            picker.selected < picker.options.size() ? static_cast<NSInteger>(picker.selected) : -1;
        segments_.enabled = node.isEnabled;
    }

    NSTextField* title_;
    NSSegmentedControl* segments_;
};

}  // namespace

NodeViewRef makeView(const view::Picker& content, const RenderContext& context) {
    if (content.style == view::Picker::Style::segmented) {
        return std::make_unique<SegmentsView>(context);
    }
    return std::make_unique<PopUpView>(context);
}

}  // namespace velko
