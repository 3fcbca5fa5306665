#pragma once

#import <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <vector>

#include "Velko/View/Node.h"
#include "Velko/mac/Images.h"
#import "Velko/mac/TreeViews.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// What native views need. Both outlive the views.
struct RenderContext {
    __weak id<VLKTreeActions> actions;
    AppIcons& icons;
};

/// The native view of one node. It stays from tree to tree as long as the node's id and kind stay the same.
/// Main thread.
class NodeView : private NonCopyable {
 public:
    struct Child {
        NodeView* node = nullptr;
        bool stretches = false;  ///< takes the whole width of its column, or the whole height of its row
    };

    virtual ~NodeView() = default;

    [[nodiscard]] NSView* view() const noexcept { return outer_; }

    /// Shows a node of the kind that this was made for. `arrange` sets its children.
    void show(const view::Node& node);

    virtual void arrange(const std::vector<Child>& children);

    /// The label of a text that can break into lines; nil for everything else.
    [[nodiscard]] virtual NSTextField* wrappingLabel() const { return nil; }

    /// Makes the view as wide as its column, or as high as its row, without the padding.
    void stretch(NSStackView* stack, bool stretches, double padding);

 protected:
    /// `control` has the node's id and speaks its words. It is `outer` itself where there is only one view.
    NodeView(NSView* outer, NSView* control);

    virtual void update(const view::Node& node) = 0;
    /// Sets what VoiceOver says of the control.
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

/// The same number for two nodes if one native view can show both.
[[nodiscard]] std::size_t kindOf(const view::Node& node);

using NodeViewRef = std::unique_ptr<NodeView>;

[[nodiscard]] NodeViewRef makeView(const view::Text& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Symbol& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::AppIcon& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Picture& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Divider& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Spacer& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Button& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::SearchField& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::KeyRecorder& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Toggle& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Picker& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::MenuButton& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Tile& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Progress& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Stack& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Group& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Scroll& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::List& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Disclosure& content, const RenderContext& context);
[[nodiscard]] NodeViewRef makeView(const view::Pages& content, const RenderContext& context);

}  // namespace velko

/// Stacks that fill their room and hide nothing that does not fit.
namespace velko::StackViews {

[[nodiscard]] NSStackView* make(NSUserInterfaceLayoutOrientation orientation, NSLayoutAttribute alignment,
                                double spacing);

/// Puts exactly these views into the stack, in that order. Views that are in their place stay untouched.
void place(NSStackView* stack, NSArray<NSView*>* views);

/// Does the same for nodes, and stretches each of them as it says.
void place(NSStackView* stack, const std::vector<NodeView::Child>& children, double padding);

/// Keeps a view inside its container, `inset` points from each edge.
void pin(NSView* view, NSView* container, double inset);

}  // namespace velko::StackViews

/// Controls with a title on their left. Where there is room, the control is at the right edge.
namespace velko::TitledControls {

[[nodiscard]] NSTextField* makeTitle();

[[nodiscard]] NSStackView* make(NSTextField* title, NSView* control);

/// Shows the words; without any, there is no title.
void setTitle(NSTextField* title, const std::string& words);

}  // namespace velko::TitledControls
