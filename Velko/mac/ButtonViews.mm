#include <variant>

#include "Velko/View/Tree.h"
#import "Velko/mac/NodeView.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

constexpr double tileIconPoints = 36;
constexpr double tileWidth = 76;

/// Words, a symbol, or both.
void setFace(NSButton* button, const std::string& title, const std::string& symbol) {
    button.title = native(title);
    button.image = symbolImage(symbol);
    button.imagePosition = button.image == nil ? NSNoImage : title.empty() ? NSImageOnly : NSImageLeading;
}

/// The common part of what is a single native button.
class ButtonLike : public NodeView {
 protected:
    ButtonLike(NSButton* button, id<TreeActions> actions, SEL action) : NodeView(button, button) {
        button.target = actions;
        button.action = action;
        [button setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                           forOrientation:NSLayoutConstraintOrientationHorizontal];
    }
};

class PushButtonView final : public ButtonLike {
 public:
    explicit PushButtonView(const RenderContext& context)
        : PushButtonView(context, [[VLKTreeButton alloc] initWithFrame:NSRect{}]) {}

 private:
    PushButtonView(const RenderContext& context, VLKTreeButton* button)
        : ButtonLike(button, context.actions, @selector(pressed:)), button_(button) {
        [button setButtonType:NSButtonTypeMomentaryPushIn];
        button.bezelStyle = NSBezelStylePush;
    }

    void update(const view::Node& node) override {
        using Style = view::Button::Style;
        const auto& button = std::get<view::Button>(node.content);
        setFace(button_, button.title, button.symbol);
        button_.enabled = node.isEnabled;
        button_.bordered = button.style != Style::link;
        button_.contentTintColor = button.style == Style::link ? [NSColor linkColor] : nil;
        button_.bezelColor = button.style == Style::primary ? [NSColor controlAccentColor] : nil;
        // All keys are heard elsewhere; this one also makes the button the default one, and look it.
        button_.keyEquivalent =
            button.shortcut == view::Shortcut{.key = view::Shortcut::Key::enter} ? @"\r" : @"";
    }

    VLKTreeButton* button_;
};

class MenuButtonView final : public ButtonLike {
 public:
    explicit MenuButtonView(const RenderContext& context)
        : MenuButtonView(context, [[VLKTreeButton alloc] initWithFrame:NSRect{}]) {}

 private:
    MenuButtonView(const RenderContext& context, VLKTreeButton* button)
        : ButtonLike(button, context.actions, @selector(menuAsked:)), button_(button) {
        [button setButtonType:NSButtonTypeMomentaryPushIn];
        button.bezelStyle = NSBezelStylePush;
    }

    void update(const view::Node& node) override {
        const auto& button = std::get<view::MenuButton>(node.content);
        button_.title = native(button.title);
        button_.enabled = node.isEnabled;
    }

    VLKTreeButton* button_;
};

class CheckboxView final : public ButtonLike {
 public:
    explicit CheckboxView(const RenderContext& context)
        : CheckboxView(context, [[VLKTreeButton alloc] initWithFrame:NSRect{}]) {}

 private:
    CheckboxView(const RenderContext& context, VLKTreeButton* button)
        : ButtonLike(button, context.actions, @selector(toggled:)), button_(button) {
        [button setButtonType:NSButtonTypeSwitch];
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

class AppTileView final : public ButtonLike {
 public:
    explicit AppTileView(const RenderContext& context)
        : AppTileView(context, [[VLKTileView alloc] initWithFrame:NSRect{}]) {}

 private:
    AppTileView(const RenderContext& context, VLKTileView* tile)
        : ButtonLike(tile, context.actions, @selector(pressed:)), icons_(context.icons), tile_(tile) {
        [tile setButtonType:NSButtonTypeMomentaryChange];
        tile.bordered = NO;
        tile.imagePosition = NSImageAbove;
        tile.lineBreakMode = NSLineBreakByTruncatingTail;
        tile.font = [NSFont systemFontOfSize:[NSFont smallSystemFontSize]];
        tile.treeActions = context.actions;
        // It is as wide as its node says; a long name makes it no wider.
        [tile setContentHuggingPriority:NSLayoutPriorityDefaultLow
                         forOrientation:NSLayoutConstraintOrientationHorizontal];
        [tile setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                       forOrientation:NSLayoutConstraintOrientationHorizontal];
        NSLayoutConstraint* width = [tile.widthAnchor constraintGreaterThanOrEqualToConstant:tileWidth];
        width.priority = NSLayoutPriorityDefaultHigh;
        width.active = YES;
    }

    void update(const view::Node& node) override {
        const auto& tile = std::get<view::Tile>(node.content);
        tile_.app = native(tile.bundleID);
        tile_.hasMenu = tile.menu != nullptr;
        tile_.image = icons_.icon(tile.bundleID, tileIconPoints);
        tile_.title = native(view::spoken(node));
        tile_.enabled = node.isEnabled;
    }

    AppIcons& icons_;
    VLKTileView* tile_;
};

}  // namespace

NodeViewRef makeView(const view::Button& /*content*/, const RenderContext& context) {
    return std::make_unique<PushButtonView>(context);
}
NodeViewRef makeView(const view::MenuButton& /*content*/, const RenderContext& context) {
    return std::make_unique<MenuButtonView>(context);
}
NodeViewRef makeView(const view::Toggle& /*content*/, const RenderContext& context) {
    return std::make_unique<CheckboxView>(context);
}
NodeViewRef makeView(const view::Tile& /*content*/, const RenderContext& context) {
    return std::make_unique<AppTileView>(context);
}

}  // namespace velko
