#include "Simulator/Desktop/SimulatedSurfaces.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Velko/Ports/Panels.h"
#include "Velko/View/Tree.h"

namespace velko {

void SimulatedSurface::open(Opening opening) {
    close();
    opening_ = std::move(opening);
    nameAfterPage();
    inHand = false;
    ++revision_;
}

void SimulatedSurface::update(view::Node content) {
    if (opening_) {
        opening_->content = std::move(content);
        nameAfterPage();
        ++revision_;
    }
}

void SimulatedSurface::nameAfterPage() {
    if (!opening_) {
        return;
    }
    if (std::string title = view::pageTitle(opening_->content); !title.empty()) {
        opening_->title = std::move(title);
    }
}

void SimulatedSurface::move(const Place& place) {
    if (opening_) {
        opening_->place = place;
        ++revision_;
    }
}

void SimulatedSurface::close() {
    if (!opening_) {
        return;
    }
    auto closed = std::move(opening_->closed);
    opening_.reset();
    ++revision_;
    if (closed) {
        mainThread_.post(std::move(closed));
    }
}

std::optional<Rect> SimulatedSurface::frame() const {
    if (!opening_) {
        return std::nullopt;
    }
    return panelFrame(opening_->place.value_or(Place{}), size);
}

void SimulatedSurface::forget() {
    opening_.reset();
    ++revision_;
}

bool SimulatedSurface::perform(std::string_view id, const view::Input& input) {
    if (!opening_) {
        return false;
    }
    return view::perform(opening_->content, id, input);
}

void SimulatedSurface::dismiss(Dismissal how) {
    if (!opening_ || (how == Dismissal::clickOutside && !isTransient_ && !opening_->dismiss)) {
        return;
    }
    const auto mayGo = opening_->dismiss;
    if (!mayGo || mayGo(how)) {
        close();
    }
}

void SimulatedSurface::pressAt(Point point) {
    const auto own = frame();
    const bool isOutside = own && opening_ && !own->contains(point);
    if (isTransient_ && isOutside && !(opening_->ignoresPress && opening_->ignoresPress(point))) {
        dismiss(Dismissal::clickOutside);
    }
}

bool SimulatedSurface::press(const view::Shortcut& shortcut) {
    if (!opening_) {
        return false;
    }
    if (const auto told = opening_->keyPressed) {
        told();
    }
    if (view::pressKey(opening_->content, shortcut)) {
        return true;
    }
    if (isTransient_ && shortcut.key == view::Shortcut::Key::escape) {
        dismiss(Dismissal::escape);
        return true;
    }
    return false;
}

SimulatedSurfaces::SimulatedSurfaces(MainThread& mainThread) {
    for (const Traits& traits : all()) {
        surfaces_.push_back(std::make_unique<SimulatedSurface>(mainThread, traits.isTransient()));
    }
}

SimulatedSurface& SimulatedSurfaces::surface(Kind kind) {
    return at(kind);
}

SimulatedSurface& SimulatedSurfaces::at(Kind kind) const {
    return *surfaces_.at(static_cast<std::size_t>(kind));
}

bool SimulatedSurfaces::letGo() {
    bool wasInHand = false;
    for (const auto& surface : surfaces_) {
        wasInHand = std::exchange(surface->inHand, false) || wasInHand;
    }
    return wasInHand;
}

void SimulatedSurfaces::clickOutside(Point point) {
    letGo();
    for (const auto& surface : surfaces_) {
        surface->pressAt(point);
    }
}

bool SimulatedSurfaces::isAnyOpen() const {
    return std::ranges::any_of(surfaces_, [](const auto& surface) { return surface->isOpen(); });
}

bool SimulatedSurfaces::isWindowOpen() const {
    return std::ranges::any_of(
        all(), [this](const Traits& each) { return each.isWindow() && at(each.kind).isOpen(); });
}

void SimulatedSurfaces::forget() {
    for (const auto& surface : surfaces_) {
        surface->forget();
    }
}

std::uint64_t SimulatedSurfaces::revision() const {
    std::uint64_t sum = announcements_.size();
    for (const auto& surface : surfaces_) {
        sum += surface->revision();
    }
    return sum;
}

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
    [[nodiscard]] bool operator()(const view::Progress& progress) const {
        return progress.value >= 0 && progress.value <= 1;
    }
    [[nodiscard]] bool operator()(const view::List& list) const {
        const auto isRow = [&](const std::string& id) {
            return std::ranges::any_of(list.children,
                                       [&](const view::Node& row) { return row.id == id && row.isEnabled; });
        };
        return (list.selection == view::List::Selection::several || list.selected.size() <= 1) &&
               std::ranges::all_of(list.selected, isRow) &&
               std::ranges::none_of(list.children,
                                    [](const view::Node& row) { return view::spoken(row).empty(); });
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
        if (const auto* field = std::get_if<view::SearchField>(&node.content)) {
            require(!(field->hasFocus && isFocusTaken_), node, "shares the first focus");
            isFocusTaken_ = isFocusTaken_ || field->hasFocus;
            driven_.emplace_back(node.id, field->drives);
        }
        const auto* const button = std::get_if<view::Button>(&node.content);
        if (button != nullptr && node.isEnabled) {
            lookAtKey(node, button->shortcut);
            lookAtKey(node, button->alternative);
        }
    }

    [[nodiscard]] std::optional<std::string> fault() const {
        const auto astray = std::ranges::find_if(driven_, [this](const auto& each) {
            return !each.second.empty() && !ids_.contains(each.second);
        });
        return fault_ || astray == driven_.end() ? fault_ : astray->first + " works a list that is not there";
    }

 private:
    void lookAtKey(const view::Node& node, const view::Shortcut& key) {
        if (key != view::Shortcut()) {
            require(std::ranges::count(shortcuts_, key) == 0, node, "shares its key");
            shortcuts_.push_back(key);
        }
    }

    void require(bool holds, const view::Node& node, const char* otherwise) {
        if (!holds && !fault_) {
            fault_ = node.id.empty() ? otherwise : node.id + " " + otherwise;
        }
    }

    std::set<std::string> ids_;
    std::vector<view::Shortcut> shortcuts_;
    std::vector<std::pair<std::string, std::string>> driven_;  ///< fields, and the lists that they work
    bool isFocusTaken_ = false;
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
