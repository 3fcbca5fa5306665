#include "Velko/Settings/SettingsController.h"

#include <utility>
#include <vector>

#include "Velko/App/AppController.h"
#include "Velko/Broom/BroomFrame.h"

namespace velko {

SettingsController::SettingsController(const FaceParts& parts, BroomFrame& broom)
    : parts_(parts),
      broom_(broom),
      window_(parts.ports.surfaces.surface(Surfaces::Kind::settings)),
      menu_(parts),
      broomMoves_(broom_.observe([this] { update(); })) {}

SettingsController::~SettingsController() {
    changes_.reset();
    window_.close();
}

void SettingsController::show() {
    if (isShown()) {
        window_.raise();
        update();
        return;
    }
    changes_ = std::make_shared<Subscription>(parts_.controller.observe([this] { update(); }));
    window_.open({.title = std::string(Surfaces::traitsOf(Surfaces::Kind::settings).title),
                  .content = tree(),
                  .closed = [this, weak = std::weak_ptr(changes_)] {
                      // It may have been opened again since.
                      if (!weak.expired()) {
                          closed();
                      }
                  }});
    onVisibilityChange();
}

void SettingsController::closed() {
    changes_.reset();
    hasSaidOutOfSight_ = std::exchange(saysOutOfSight_, false) || hasSaidOutOfSight_;
    onVisibilityChange();
}

void SettingsController::update() {
    if (isShown()) {
        window_.update(tree());
    }
}

view::Node SettingsController::tree() {
    constexpr double width = 640;
    std::vector<view::Node> children = SettingsPages::problems(parts_, actions());
    if (broom_.isOutOfSight() && !hasSaidOutOfSight_) {
        saysOutOfSight_ = true;
        children.push_back(SettingsPages::iconOutOfSight(actions()));
    }
    children.push_back({.id = "pages",
                        .label = "Pages",
                        .content = view::Pages{.tabs = {{.title = "Menu Bar", .symbol = "menubar.rectangle"},
                                                        {.title = "General", .symbol = "gearshape"},
                                                        {.title = "About", .symbol = "info.circle"}},
                                               .selected = page_,
                                               .choose =
                                                   [this](std::size_t page) {
                                                       page_ = page;
                                                       update();
                                                   },
                                               .children = {page()}}});
    return {.id = "settings",
            .width = width,
            .content = view::Stack{.spacing = 14, .padding = 20, .children = std::move(children)}};
}

view::Node SettingsController::page() {
    switch (page_) {
        case 0: {
            const auto choose = [this](std::optional<Section> section) {
                listed_ = section;
                update();
            };
            return SettingsPages::menuBar(parts_, {.section = listed_, .choose = choose}, actions());
        }
        case 1: return SettingsPages::general(parts_);
        default: return SettingsPages::about(parts_, actions());
    }
}

SettingsPages::Actions SettingsController::actions() {
    return {.menu = menu_, .sortAgain = onResort, .openPermission = onPermission};
}

}  // namespace velko
