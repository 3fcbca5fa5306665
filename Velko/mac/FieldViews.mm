#include <algorithm>
#include <cmath>
#include <variant>

#include "Velko/View/Tree.h"
#import "Velko/mac/NodeView.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

@implementation VLKSearchField

- (BOOL)isComposing {
    NSText* editor = self.currentEditor;
    return [editor isKindOfClass:[NSTextView class]] && [(NSTextView*)editor hasMarkedText];
}

@end

namespace velko {

namespace {

class SearchFieldView final : public NodeView {
 public:
    explicit SearchFieldView(const RenderContext& context)
        : SearchFieldView(context, [[VLKSearchField alloc] initWithFrame:NSRect{}]) {}

 private:
    SearchFieldView(const RenderContext& context, VLKSearchField* field)
        : NodeView(field, field), field_(field) {
        // Each keystroke counts, and so does the button that empties the field.
        field.sendsWholeSearchString = NO;
        field.sendsSearchStringImmediately = YES;
        field.target = context.actions;
        field.action = @selector(searched:);
        [field setContentHuggingPriority:NSLayoutPriorityDefaultLow
                          forOrientation:NSLayoutConstraintOrientationHorizontal];
    }

    void update(const view::Node& node) override {
        const auto& field = std::get<view::SearchField>(node.content);
        field_.placeholderString = native(field.placeholder);
        field_.enabled = node.isEnabled;
        NSString* text = native(field.text);
        // Setting it moves the insertion point, and ends what an input method has begun.
        if (!field_.isComposing && ![field_.stringValue isEqualToString:text]) {
            field_.stringValue = text;
        }
    }

    VLKSearchField* field_;
};

/// A switch as the system's settings have it.
class SliderView final : public NodeView {
 public:
    explicit SliderView(const RenderContext& context)
        : SliderView(context, TitledControls::makeTitle(), [[NSSwitch alloc] initWithFrame:NSRect{}]) {}

 private:
    SliderView(const RenderContext& context, NSTextField* title, NSSwitch* slider)
        : NodeView(TitledControls::make(title, slider), slider), title_(title), slider_(slider) {
        slider.target = context.actions;
        slider.action = @selector(switched:);
        // VoiceOver says the title when it comes to the switch.
        title.cell.accessibilityElement = NO;
    }

    void update(const view::Node& node) override {
        const auto& toggle = std::get<view::Toggle>(node.content);
        TitledControls::setTitle(title_, toggle.title);
        title_.textColor = node.isEnabled ? [NSColor labelColor] : [NSColor secondaryLabelColor];
        slider_.enabled = node.isEnabled;
        slider_.state = toggle.isOn ? NSControlStateValueOn : NSControlStateValueOff;
    }

    NSTextField* title_;
    NSSwitch* slider_;
};

class CheckboxView final : public NodeView {
 public:
    explicit CheckboxView(const RenderContext& context)
        : CheckboxView(context, [[VLKTreeButton alloc] initWithFrame:NSRect{}]) {}

 private:
    CheckboxView(const RenderContext& context, VLKTreeButton* button)
        : NodeView(button, button), button_(button) {
        [button setButtonType:NSButtonTypeSwitch];
        button.target = context.actions;
        button.action = @selector(toggled:);
        [button setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                           forOrientation:NSLayoutConstraintOrientationHorizontal];
    }

    void update(const view::Node& node) override {
        const auto& toggle = std::get<view::Toggle>(node.content);
        button_.title = native(toggle.title);
        button_.imagePosition = toggle.title.empty() ? NSImageOnly : NSImageLeading;
        button_.enabled = node.isEnabled;
        button_.state = toggle.isOn ? NSControlStateValueOn : NSControlStateValueOff;
    }

    VLKTreeButton* button_;
};

class ProgressBarView final : public NodeView {
 public:
    ProgressBarView() : ProgressBarView([[NSProgressIndicator alloc] initWithFrame:NSRect{}]) {}

 private:
    explicit ProgressBarView(NSProgressIndicator* bar) : NodeView(bar, bar), bar_(bar) {
        bar.style = NSProgressIndicatorStyleBar;
        bar.indeterminate = NO;
        bar.minValue = 0;
        bar.maxValue = 1;
    }

    void update(const view::Node& node) override {
        const double value = std::get<view::Progress>(node.content).value;
        bar_.doubleValue = std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
    }

    NSProgressIndicator* bar_;
};

}  // namespace

NodeViewRef makeView(const view::SearchField& /*content*/, const RenderContext& context) {
    return std::make_unique<SearchFieldView>(context);
}
NodeViewRef makeView(const view::Toggle& content, const RenderContext& context) {
    if (content.style == view::Toggle::Style::checkbox) {
        return std::make_unique<CheckboxView>(context);
    }
    return std::make_unique<SliderView>(context);
}
NodeViewRef makeView(const view::Progress& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<ProgressBarView>();
}

}  // namespace velko
