#import "Velko/mac/TreeRenderer.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "Velko/View/Tree.h"

namespace velko {

namespace {

bool isSpreading(const view::Node& node);

bool isAnySpreading(const std::vector<view::Node>& nodes) {
    return std::ranges::any_of(nodes, isSpreading);
}

/// Whether a node uses all the width that it can have.
bool isSpreading(const view::Node& node) {
    if (node.width > 0) {
        return false;
    }
    if (const auto* text = std::get_if<view::Text>(&node.content)) {
        return text->isCentred;
    }
    if (const auto* stack = std::get_if<view::Stack>(&node.content)) {
        const bool hasGap = stack->axis == view::Stack::Axis::row &&
                            std::ranges::any_of(stack->children, [](const auto& child) {
                                return std::holds_alternative<view::Spacer>(child.content);
                            });
        return hasGap || isAnySpreading(stack->children);
    }
    // Their titles are on the left, they themselves on the right.
    if (const auto* toggle = std::get_if<view::Toggle>(&node.content)) {
        return toggle->style == view::Toggle::Style::slider && !toggle->title.empty();
    }
    if (const auto* picker = std::get_if<view::Picker>(&node.content)) {
        return !picker->title.empty();
    }
    return std::holds_alternative<view::Divider>(node.content) ||
           std::holds_alternative<view::SearchField>(node.content) ||
           std::holds_alternative<view::Progress>(node.content) ||
           std::holds_alternative<view::Group>(node.content) ||
           std::holds_alternative<view::Scroll>(node.content) ||
           std::holds_alternative<view::List>(node.content) ||
           std::holds_alternative<view::Disclosure>(node.content) ||
           std::holds_alternative<view::Pages>(node.content);
}

bool isColumn(const view::Node& node) {
    const auto* stack = std::get_if<view::Stack>(&node.content);
    return stack != nullptr && stack->axis == view::Stack::Axis::column;
}

/// In a row only dividers stretch, from top to bottom. In a column everything stretches that can use the
/// width, and also a column within it, unless the outer column centres its children.
bool stretches(const view::Node& child, const view::Node& parent) {
    const auto* stack = std::get_if<view::Stack>(&parent.content);
    if (stack != nullptr && stack->axis == view::Stack::Axis::row) {
        return std::holds_alternative<view::Divider>(child.content);
    }
    const bool isLeading = stack == nullptr || stack->alignment == view::Stack::Alignment::leading;
    return isSpreading(child) || (isLeading && isColumn(child) && child.width <= 0);
}

}  // namespace

NSView* TreeRenderer::render(const view::Node& root) {
    seen_.clear();
    NSView* result = render(root, "root").view();
    std::erase_if(known_, [this](const auto& entry) { return !seen_.contains(entry.first); });
    return result;
}

std::vector<NSTextField*> TreeRenderer::wrappingLabels() const {
    std::vector<NSTextField*> labels;
    for (const auto& [key, known] : known_) {
        if (NSTextField* label = known.view->wrappingLabel()) {
            labels.push_back(label);
        }
    }
    return labels;
}

NodeView& TreeRenderer::render(const view::Node& node, const std::string& place) {
    // A node without an id, or with one that another node has, is known by its place.
    std::string key = node.id.empty() || seen_.contains(node.id) ? "@" + place : node.id;
    Known& known = known_[key];
    const std::size_t kind = kindOf(node);
    if (!known.view || known.kind != kind) {
        const auto make = [this](const auto& content) { return makeView(content, context_); };
        known = {.kind = kind, .view = std::visit(make, node.content)};
    }
    seen_.insert(std::move(key));
    known.view->show(node);
    renderChildren(*known.view, node, place);
    return *known.view;
}

void TreeRenderer::renderChildren(NodeView& view, const view::Node& node, const std::string& place) {
    std::vector<NodeView::Child> children;
    for (const view::Node& child : view::childrenOf(node)) {
        children.push_back({.node = &render(child, place + "/" + std::to_string(children.size())),
                            .stretches = stretches(child, node)});
    }
    view.arrange(children);
}

}  // namespace velko
