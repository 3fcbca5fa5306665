#include "Velko/Checks/RenderingCheck.h"

#include <algorithm>
#include <utility>

#include "Velko/View/Tree.h"

namespace velko::RenderingCheck {

namespace {

using Contracts::expect;
using view::Node;

std::vector<Node> controls() {
    const std::vector<std::string> options{"One", "Two"};
    return {
        view::button("button", {.title = "Button"}),
        {.id = "symbol", .label = "Settings", .content = view::Button{.symbol = "gearshape"}},
        {.id = "search", .content = view::SearchField{.placeholder = "Search"}},
        {.id = "toggle", .content = view::Toggle{.title = "Toggle", .isOn = true}},
        {.id = "checkbox",
         .content = view::Toggle{.title = "Checkbox", .style = view::Toggle::Style::checkbox}},
        {.id = "pop-up", .content = view::Picker{.title = "Pop-up", .options = options}},
        {.id = "segments",
         .content =
             view::Picker{.title = "Segments", .options = options, .style = view::Picker::Style::segmented}},
        {.id = "menu", .content = view::MenuButton{.title = "Menu"}},
        {.id = "tile", .content = view::Tile{.bundleID = "com.apple.finder", .name = "Finder"}},
        {.id = "progress", .label = "Progress", .content = view::Progress{.value = 0.5}},
        {.id = "list",
         .label = "List",
         .content = view::List{.selected = {"row"}, .height = 60, .children = {view::text("row", "Row")}}},
        {.id = "disclosure",
         .content =
             view::Disclosure{
                 .title = "More", .isOpen = true, .children = {view::text("disclosed", "Disclosed")}}},
        {.id = "pages",
         .label = "Pages",
         .content = view::Pages{.tabs = {{.title = "A"}, {.title = "B"}}, .children = {}}},
    };
}

constexpr double height = 800;  // more than the tree needs

/// The controls, inside a node of every kind that is no control.
Node tree(std::vector<Node> children) {
    const std::string words = "Words that are long enough to need more than the one line that they start on.";
    Node scroll{.id = "scroll",
                .content = view::Scroll{.height = 60, .children = {view::text("scrolled", words)}}};
    Node group{.id = "group", .content = view::Group{.title = "Group", .children = std::move(children)}};
    Node divider{.id = "divider", .content = view::Divider{}};
    Node row =
        view::row("row", {view::text("left", words), view::spacer("gap"), view::text("right", "Right")});
    Node root =
        view::column("tree", {std::move(scroll), std::move(divider), std::move(group), std::move(row)});
    root.width = 320;
    root.minHeight = height;
    return root;
}

const DrawnView* find(const std::vector<DrawnView>& views, const std::string& id) {
    const auto found = std::ranges::find(views, id, &DrawnView::id);
    return found == views.end() ? nullptr : &*found;
}

/// The ids of the nodes for which `isWrong` holds or which have no view.
template <class Wrong>
std::string idsOf(const std::vector<Node>& nodes, const std::vector<DrawnView>& views, const Wrong& isWrong) {
    std::string ids;
    for (const Node& node : nodes) {
        const DrawnView* view = find(views, node.id);
        if (view == nullptr || isWrong(node, *view)) {
            ids += (ids.empty() ? "" : ", ") + node.id;
        }
    }
    return ids;
}

}  // namespace

void check(const Draw& draw, Contracts::Checks& checks) {
    std::vector<Node> nodes = controls();
    const std::vector<DrawnView> first = draw(tree(nodes));
    const std::string unseen = idsOf(nodes, first, [](const Node&, const DrawnView& view) {
        return view.size.width < 1 || view.size.height < 1;
    });
    expect(checks, "windows: every control has room", unseen.empty(), unseen);
    const std::string silent = idsOf(nodes, first, [](const Node& node, const DrawnView& view) {
        return view.words != view::spoken(node);
    });
    expect(checks, "windows: VoiceOver knows every control", silent.empty(), silent);

    const DrawnView* whole = find(first, "tree");
    expect(checks, "windows: what has a least height has it",
           whole != nullptr && whole->size.height >= height);

    std::ranges::reverse(nodes);
    const std::vector<DrawnView> second = draw(tree(nodes));
    const std::string renewed = idsOf(nodes, second, [&](const Node& node, const DrawnView& view) {
        const DrawnView* before = find(first, node.id);
        return before == nullptr || before->view != view.view;
    });
    expect(checks, "windows: a control that moves stays itself", renewed.empty(), renewed);

    const std::vector<DrawnView> third =
        draw(tree({{.id = "button", .content = view::Picker{.options = {"One"}}}}));
    const DrawnView* before = find(second, "button");
    const DrawnView* after = find(third, "button");
    expect(checks, "windows: a control of another kind is another one",
           before != nullptr && after != nullptr && before->view != after->view);
    expect(checks, "windows: what is gone is gone", find(third, "tile") == nullptr);
}

}  // namespace velko::RenderingCheck
