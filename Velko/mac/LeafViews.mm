#include <optional>
#include <variant>

#import "Velko/mac/Images.h"
#import "Velko/mac/NodeView.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

namespace {

NSFont* font(view::Text::Style style) {
    using Style = view::Text::Style;
    switch (style) {
        case Style::largeTitle:
            return [NSFont systemFontOfSize:26 weight:NSFontWeightBold];
        case Style::title:
            return [NSFont systemFontOfSize:17 weight:NSFontWeightSemibold];
        case Style::headline:
            return [NSFont systemFontOfSize:[NSFont systemFontSize] weight:NSFontWeightSemibold];
        case Style::caption:
            return [NSFont systemFontOfSize:[NSFont smallSystemFontSize]];
        case Style::body:
            break;
    }
    return [NSFont systemFontOfSize:[NSFont systemFontSize]];
}

NSColor* textColor(const view::Node& node, const view::Text& text) {
    return text.isSecondary || !node.isEnabled ? [NSColor secondaryLabelColor] : [NSColor labelColor];
}

class TextView final : public NodeView {
 public:
    TextView() : TextView([NSTextField wrappingLabelWithString:@""]) {}

    [[nodiscard]] NSTextField* wrappingLabel() const override { return label_; }

 private:
    explicit TextView(NSTextField* label) : NodeView(label, label), label_(label) {
        // When there is little room, texts break into lines before anything else becomes smaller.
        [label setContentCompressionResistancePriority:NSLayoutPriorityDefaultLow
                                        forOrientation:NSLayoutConstraintOrientationHorizontal];
        [label setContentHuggingPriority:NSLayoutPriorityDefaultLow + 1
                          forOrientation:NSLayoutConstraintOrientationHorizontal];
        [label setContentHuggingPriority:NSLayoutPriorityDefaultHigh
                          forOrientation:NSLayoutConstraintOrientationVertical];
    }

    void update(const view::Node& node) override {
        const auto& text = std::get<view::Text>(node.content);
        label_.textColor = textColor(node, text);
        // Setting any of these would remove the user's selection in the text.
        if (style_ != text.style) {
            style_ = text.style;
            label_.font = font(text.style);
        }
        const NSTextAlignment alignment = text.isCentred ? NSTextAlignmentCenter : NSTextAlignmentNatural;
        if (label_.alignment != alignment) {
            label_.alignment = alignment;
        }
        if (label_.selectable != text.isSelectable) {
            label_.selectable = text.isSelectable;
        }
        NSString* words = native(text.text);
        if (![label_.stringValue isEqualToString:words]) {
            label_.stringValue = words;
        }
    }

    void speak(const view::Node& node) override {
        label_.accessibilityLabel = node.label.empty() ? nil : native(node.label);
    }

    NSTextField* label_;
    std::optional<view::Text::Style> style_;
};

/// A view that may be decoration only. VoiceOver ignores it if its node has no label.
class PictorialView : public NodeView {
 protected:
    /// `cell` is the view's cell, if it has one: VoiceOver is to speak of the view instead.
    explicit PictorialView(NSView* view, NSCell* cell = nil) : NodeView(view, view), view_(view) {
        cell.accessibilityElement = NO;
        for (const auto orientation :
             {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical}) {
            [view setContentHuggingPriority:NSLayoutPriorityDefaultHigh forOrientation:orientation];
            [view setContentCompressionResistancePriority:NSLayoutPriorityRequired
                                           forOrientation:orientation];
        }
    }

    void speak(const view::Node& node) final {
        view_.accessibilityElement = !node.label.empty();
        view_.accessibilityRole = NSAccessibilityImageRole;
        view_.accessibilityLabel = node.label.empty() ? nil : native(node.label);
    }

 private:
    NSView* view_;
};

class SymbolView final : public PictorialView {
 public:
    SymbolView() : SymbolView([[NSImageView alloc] initWithFrame:NSRect{}]) {}

 private:
    explicit SymbolView(NSImageView* image) : PictorialView(image, image.cell), image_(image) {}

    void update(const view::Node& node) override {
        const auto& symbol = std::get<view::Symbol>(node.content);
        image_.image = symbolImage(symbol.name);
        image_.symbolConfiguration =
            [NSImageSymbolConfiguration configurationWithPointSize:symbol.points weight:NSFontWeightRegular];
        image_.contentTintColor = Painting::color(symbol.ink);
    }

    NSImageView* image_;
};

class AppIconView final : public PictorialView {
 public:
    explicit AppIconView(AppIcons& icons)
        : AppIconView(icons, [[NSImageView alloc] initWithFrame:NSRect{}]) {}

 private:
    AppIconView(AppIcons& icons, NSImageView* image)
        : PictorialView(image, image.cell), icons_(icons), image_(image) {}

    void update(const view::Node& node) override {
        const auto& icon = std::get<view::AppIcon>(node.content);
        image_.image = icons_.icon(icon.bundleID, icon.points);
    }

    AppIcons& icons_;
    NSImageView* image_;
};

class DrawingView final : public PictorialView {
 public:
    DrawingView() : DrawingView([[VLKPictureView alloc] initWithFrame:NSRect{}]) {}

 private:
    explicit DrawingView(VLKPictureView* picture) : PictorialView(picture), picture_(picture) {}

    void update(const view::Node& node) override {
        picture_.drawing = std::get<view::Picture>(node.content).drawing;
    }

    VLKPictureView* picture_;
};

class DividerView final : public NodeView {
 public:
    DividerView() : DividerView([[NSBox alloc] initWithFrame:NSRect{}]) {}

 private:
    explicit DividerView(NSBox* line) : NodeView(line, line) {
        line.boxType = NSBoxSeparator;
        line.accessibilityElement = NO;
        // It is a line in rows and in columns: its stack makes it longer in one direction.
        for (NSLayoutDimension* side : {line.widthAnchor, line.heightAnchor}) {
            NSLayoutConstraint* thin = [side constraintEqualToConstant:1];
            thin.priority = NSLayoutPriorityDefaultHigh;
            thin.active = YES;
        }
    }

    void update(const view::Node& /*node*/) override {}
};

class GapView final : public NodeView {
 public:
    GapView() : GapView([[VLKSpacerView alloc] initWithFrame:NSRect{}]) {}

 private:
    explicit GapView(VLKSpacerView* gap) : NodeView(gap, gap) {
        for (const auto orientation :
             {NSLayoutConstraintOrientationHorizontal, NSLayoutConstraintOrientationVertical}) {
            [gap setContentHuggingPriority:1 forOrientation:orientation];
        }
    }

    void update(const view::Node& /*node*/) override {}
};

}  // namespace

NodeViewRef makeView(const view::Text& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<TextView>();
}
NodeViewRef makeView(const view::Symbol& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<SymbolView>();
}
NodeViewRef makeView(const view::AppIcon& /*content*/, const RenderContext& context) {
    return std::make_unique<AppIconView>(context.icons);
}
NodeViewRef makeView(const view::Picture& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<DrawingView>();
}
NodeViewRef makeView(const view::Divider& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<DividerView>();
}
NodeViewRef makeView(const view::Spacer& /*content*/, const RenderContext& /*context*/) {
    return std::make_unique<GapView>();
}

}  // namespace velko
