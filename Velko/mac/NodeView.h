#pragma once

#import <AppKit/AppKit.h>
#include <memory>
#include <vector>

#include "Velko/View/Node.h"
#include "Velko/mac/Images.h"
#import "Velko/mac/TreeActions.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// What native views are made with. Both outlive them.
struct RenderContext {
    __weak id<TreeActions> actions;
    AppIcons& icons;
};

/// The native view of one node, kept from tree to tree while the node's id and kind stay the same. Main
/// thread.
class NodeView : private NonCopyable {
 public:
    struct Child {
        NodeView* node = nullptr;
        bool stretches = false;  ///< takes the whole width of its column, or the whole height of its row
    };

    virtual ~NodeView() = default;

    [[nodiscard]] NSView* view() const noexcept { return outer_; }

    /// Shows a node of the kind that this was made for; its children come with `arrange`.
    void show(const view::Node& node);

    virtual void arrange(const std::vector<Child>& children);

    /// A text that breaks into lines when there is no room for it in one; nil for everything else.
    [[nodiscard]] virtual NSTextField* wrappingLabel() const { return nil; }

    /// Makes the view as wide as its column or as high as its row, less the padding.
    void stretch(NSStackView* stack, bool stretches, double padding);

 protected:
    /// `control` is what has the node's id and words; both are the same when there is but one view.
    NodeView(NSView* outer, NSView* control);

    virtual void update(const view::Node& node) = 0;
    /// Tells VoiceOver of the control.
    virtual void speak(const view::Node& node);

 private:
    NSView* outer_;
    NSView* control_;
    NSLayoutConstraint* width_ = nil;
    NSLayoutConstraint* height_ = nil;
    NSLayoutConstraint* stretch_ = nil;
    __weak NSStackView* stretchedIn_ = nil;
    double padding_ = 0;
};

/// A number that two nodes share when the same native view can show both.
[[nodiscard]] std::size_t kindOf(const view::Node& node);

using NodeViewRef = std::unique_ptr<NodeView>;

[[nodiscard]] NodeViewRef makeView(const view::Text& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Symbol& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::AppIcon& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Picture& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Divider& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Spacer& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Button& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Toggle& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Picker& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::MenuButton& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Tile& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Stack& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Group& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Scroll& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Pages& content, const RenderContext& context);

}  // namespace velko
