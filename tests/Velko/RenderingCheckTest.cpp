#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Checks/RenderingCheck.h"
#include "Velko/View/Tree.h"

namespace velko {
namespace {

using RenderingCheck::DrawnView;

/// A renderer that keeps one view for each id and kind, as it should. It can be told to do one thing wrong.
class FakeRenderer {
 public:
    std::string dropped;  ///< is not drawn
    std::string mute;     ///< has no words
    bool forgets = false;
    bool isFlat = false;
    bool mixesKinds = false;

    std::vector<DrawnView> draw(const view::Node& root) {
        if (forgets) {
            views_.clear();
        }
        std::vector<DrawnView> drawn;
        view::walk(root, [&](const view::Node& node) {
            if (node.id == dropped) {
                return;
            }
            auto& view = views_[{node.id, mixesKinds ? 0 : node.content.index()}];
            if (!view) {
                view = made_.emplace_back(std::make_shared<int>());
            }
            drawn.push_back({.id = node.id,
                             .words = node.id == mute ? "" : view::spoken(node),
                             .size = {.width = 10, .height = std::max(10.0, isFlat ? 0 : node.minHeight)},
                             .view = view.get()});
        });
        return drawn;
    }

 private:
    std::map<std::pair<std::string, std::size_t>, std::shared_ptr<int>> views_;
    std::vector<std::shared_ptr<int>> made_;  // kept, so that no address is used twice
};

std::string failures(FakeRenderer renderer) {
    Contracts::Checks checks;
    RenderingCheck::check([&](const view::Node& node) { return renderer.draw(node); }, checks);
    std::string failed;
    for (const auto& check : checks) {
        failed += check.passed ? "" : check.name + " (" + check.seen + ")\n";
    }
    return failed;
}

FakeRenderer with(auto change) {
    FakeRenderer renderer;
    change(renderer);
    return renderer;
}

TEST(RenderingCheck, PassesARendererThatKeepsItsViewsAndFindsWhatOthersGetWrong) {
    EXPECT_EQ(failures({}), "");
    EXPECT_EQ(failures(with([](auto& fake) { fake.mute = "toggle"; })),
              "windows: VoiceOver knows every control (toggle)\n");
    EXPECT_NE(failures(with([](auto& fake) { fake.dropped = "tile"; })).find("has room (tile)"),
              std::string::npos);
    EXPECT_EQ(failures(with([](auto& fake) { fake.isFlat = true; })),
              "windows: what has a least height has it ()\n");
    EXPECT_NE(failures(with([](auto& fake) { fake.forgets = true; })).find("stays itself (pages, disclosure"),
              std::string::npos);
    EXPECT_EQ(failures(with([](auto& fake) { fake.mixesKinds = true; })),
              "windows: a control of another kind is another one ()\n");
}

}  // namespace
}  // namespace velko
