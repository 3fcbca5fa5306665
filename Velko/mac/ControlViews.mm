#include <variant>

#include "Velko/View/Tree.h"
#import "Velko/mac/NodeView.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

/// Gives a button its title, its symbol, or both.
void setFace(NSButton* button, const std::string& title, const std::string& symbol) {
    button.title = native(title);
    button.image = symbolImage(symbol);
    button.imagePosition = button.image == nil ? NSNoImage : title.empty() ? NSImageOnly : NSImageLeading;
}

/// What views have in common that are one native button.
class ButtonLike : public NodeView {
 protected:
    ButtonLike(NSButton* button, id<VLKTreeActions> actions, SEL action) : NodeView(button, button) {
        button.target = actions;
        button.action = action;
        [button setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                           forOrientation:NSLayoutConstraintOrientationHorizontal];
    }
};

/// What views have in common that are a push button.
class PushButtonLike : public ButtonLike {
 protected:
    PushButtonLike(const RenderContext& context, SEL action)
        : PushButtonLike([[VLKTreeButton alloc] initWithFrame:NSRect{}], context, action) {}

    [[nodiscard]] VLKTreeButton* button() const noexcept { return button_; }

 private:
    PushButtonLike(VLKTreeButton* made, const RenderContext& context, SEL action)
        : ButtonLike(made, context.actions, action), button_(made) {
        [made setButtonType:NSButtonTypeMomentaryPushIn];
        made.bezelStyle = NSBezelStylePush;
    }

    VLKTreeButton* button_;
};

class PushButtonView final : public PushButtonLike {
 public:
    explicit PushButtonView(const RenderContext& context) : PushButtonLike(context, @selector(pressed:)) {}

 private:
    void update(const view::Node& node) override {
        using Style = view::Button::Style;
        const auto& shown = std::get<view::Button>(node.content);
        setFace(button(), shown.title, shown.symbol);
        button().enabled = node.isEnabled;
        button().bordered = shown.style != Style::link;
        button().contentTintColor = shown.style == Style::link ? [NSColor linkColor] : nil;
        button().bezelColor = shown.style == Style::primary ? [NSColor controlAccentColor] : nil;
        // Velko listens to keys elsewhere. This one also makes the button the default button, and lets it
        // look so.
        button().keyEquivalent =
            shown.shortcut == view::Shortcut{.key = view::Shortcut::Key::enter} ? @"\r" : @"";
    }
};

class KeyRecorderView final : public PushButtonLike {
 public:
    explicit KeyRecorderView(const RenderContext& context) : PushButtonLike(context, @selector(pressed:)) {}

 private:
    void update(const view::Node& node) override {
        const auto& shown = std::get<view::KeyRecorder>(node.content);
        button().title = native(shown.title);
        button().enabled = node.isEnabled;
        button().bezelColor = shown.isRecording ? [NSColor controlAccentColor] : nil;
    }
};

class MenuButtonView final : public PushButtonLike {
 public:
    explicit MenuButtonView(const RenderContext& context) : PushButtonLike(context, @selector(menuAsked:)) {}

 private:
    void update(const view::Node& node) override {
        const auto& shown = std::get<view::MenuButton>(node.content);
        setFace(button(), shown.title, shown.symbol);
        button().enabled = node.isEnabled;
    }
};

class AppTileView final : public ButtonLike {
 public:
    explicit AppTileView(const RenderContext& context)
        : AppTileView(context, [[VLKTileView alloc] initWithFrame:NSRect{}]) {}

 private:
    AppTileView(const RenderContext& context, VLKTileView* tile)
        : ButtonLike(tile, context.actions, @selector(pressed:)), icons_(context.icons), tile_(tile) {
        [tile setButtonType:NSButtonTypeMomentaryChange];
        tile.bordered = NO;
        tile.treeActions = context.actions;
        // Its node says how wide it is; a long name makes it no wider.
        [tile setContentHuggingPriority:NSLayoutPriorityDefaultLow
                         forOrientation:NSLayoutConstraintOrientationHorizontal];
        [tile setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                       forOrientation:NSLayoutConstraintOrientationHorizontal];
        NSLayoutConstraint* width =
            [tile.widthAnchor constraintGreaterThanOrEqualToConstant:view::Tile::usualWidth];
        width.priority = NSLayoutPriorityDefaultHigh;
        width.active = YES;
    }

    void update(const view::Node& node) override {
        const auto& tile = std::get<view::Tile>(node.content);
        tile_.app = native(tile.bundleID);
        tile_.hasMenu = tile.menu != nullptr;
        tile_.image = icons_.icon(tile.bundleID, view::Tile::iconPoints);
        tile_.name = native(tile.name);
        tile_.badge = native(tile.badge);
        tile_.enabled = node.isEnabled;
    }

    AppIcons& icons_;
    VLKTileView* tile_;
};

}  // namespace

NodeViewRef makeView(const view::Button& /*content*/, const RenderContext& context) {
    return std::make_unique<PushButtonView>(context);
}
NodeViewRef makeView(const view::KeyRecorder& /*content*/, const RenderContext& context) {
    return std::make_unique<KeyRecorderView>(context);
}

NodeViewRef makeView(const view::MenuButton& /*content*/, const RenderContext& context) {
    return std::make_unique<MenuButtonView>(context);
}
NodeViewRef makeView(const view::Tile& /*content*/, const RenderContext& context) {
    return std::make_unique<AppTileView>(context);
}

namespace {

class PopUpView final : public NodeView {
 public:
    explicit PopUpView(const RenderContext& context)
        : PopUpView(context, TitledControls::makeTitle(),
                    [[NSPopUpButton alloc] initWithFrame:NSRect {} pullsDown:NO]) {}

 private:
    PopUpView(const RenderContext& context, NSTextField* title, NSPopUpButton* popUp)
        : NodeView(TitledControls::make(title, popUp), popUp), title_(title), popUp_(popUp) {
        popUp.target = context.actions;
        popUp.action = @selector(picked:);
    }

    void update(const view::Node& node) override {
        const auto& picker = std::get<view::Picker>(node.content);
        TitledControls::setTitle(title_, picker.title);
        // While its menu is open, it must not be filled again without need.
        if (picker.options != options_) {
            options_ = picker.options;
            [popUp_ removeAllItems];
            for (const std::string& option : options_) {
                // The button's own method would put options of the same name together.
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
        : SegmentsView(context, TitledControls::makeTitle(),
                       [[NSSegmentedControl alloc] initWithFrame:NSRect{}]) {}

 private:
    SegmentsView(const RenderContext& context, NSTextField* title, NSSegmentedControl* segments)
        : NodeView(TitledControls::make(title, segments), segments), title_(title), segments_(segments) {
        segments.trackingMode = NSSegmentSwitchTrackingSelectOne;
        segments.target = context.actions;
        segments.action = @selector(segmentPicked:);
    }

    void update(const view::Node& node) override {
        const auto& picker = std::get<view::Picker>(node.content);
        TitledControls::setTitle(title_, picker.title);
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
