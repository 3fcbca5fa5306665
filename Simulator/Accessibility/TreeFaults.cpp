#include "Simulator/Accessibility/TreeFaults.h"

#include <algorithm>
#include <set>
#include <variant>
#include <vector>

#include "Velko/View/Tree.h"

namespace velko {

namespace {

/// Whether a control shows a value that it can have.
struct IsPossible {
    [[nodiscard]] bool operator()(const view::Picker& picker) const {
        const bool mayBeOpen = picker.style == view::Picker::Style::segmented;
        return picker.selected < picker.options.size() ||
               (mayBeOpen && picker.selected == view::Picker::nothing);
    }
    [[nodiscard]] bool operator()(const view::Pages& pages) const {
        return pages.selected < pages.tabs.size();
    }
    [[nodiscard]] bool operator()(const auto&) const { return true; }
};

class Audit {
 public:
    void look(const view::Node& node) {
        require(!node.id.empty(), node, "a node has no id");
        require(ids_.insert(node.id).second, node, "is there twice");
        require(!view::isControl(node) || !view::spoken(node).empty(), node, "is silent");
        require(std::visit(IsPossible{}, node.content), node, "shows a value that it can't have");
        const auto* const button = std::get_if<view::Button>(&node.content);
        if (button != nullptr && node.isEnabled && button->shortcut != view::Shortcut()) {
            require(std::ranges::count(shortcuts_, button->shortcut) == 0, node, "shares its key");
            shortcuts_.push_back(button->shortcut);
        }
    }

    [[nodiscard]] const std::optional<std::string>& fault() const noexcept { return fault_; }

 private:
    void require(bool holds, const view::Node& node, const char* otherwise) {
        if (!holds && !fault_) {
            fault_ = node.id.empty() ? otherwise : node.id + " " + otherwise;
        }
    }

    std::set<std::string> ids_;
    std::vector<view::Shortcut> shortcuts_;
    std::optional<std::string> fault_;
};

}  // namespace

std::optional<std::string> faultIn(const view::Node& root) {
    Audit audit;
    view::walk(root, [&](const view::Node& node) { audit.look(node); });
    return audit.fault();
}

std::optional<std::string> faultIn(const view::Menu& menu) {
    for (const view::MenuItem& item : menu) {
        if (item.kind == view::MenuItem::Kind::separator) {
            continue;
        }
        if (item.title.empty()) {
            return "an entry has no title";
        }
        const bool canBeChosen = item.kind == view::MenuItem::Kind::entry && item.isEnabled;
        if (canBeChosen && !item.action && item.submenu.empty()) {
            return item.title + " does nothing";
        }
        if (auto below = faultIn(item.submenu)) {
            return below;
        }
    }
    return std::nullopt;
}

}  // namespace velko
