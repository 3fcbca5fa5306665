#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/MenuBar/SimulatedBroom.h"
#include "Simulator/Time/SimulatedMainThread.h"
#include "Velko/Ports/StatusItem.h"

namespace velko {

/// The broom as a person sees it and clicks on it.
class SimulatedStatusItem final : public StatusItem {
 public:
    explicit SimulatedStatusItem(MachineThread& thread) : thread_(thread) {}

    void install(const std::string& autosaveName, const std::string& label,
                 std::function<void(Click)> clicked) override;
    void setImage(const Image& image) override;
    void setToolTip(const std::string& text) override;
    void openMenu(view::Menu menu, std::function<void()> closed) override;
    [[nodiscard]] bool isMenuOpen() const override { return menu_.has_value(); }

    /// Runs the icon's action for a click. If a menu is open, the click only closes it.
    void click(const SimulatedClick& click = {});
    /// A VoiceOver user presses the icon, with VoiceOver's two keys down.
    void pressByVoiceOver();
    /// The user chooses an item of the open menu, and the menu closes. Returns whether there was such an
    /// item.
    bool chooseFromMenu(const std::vector<std::size_t>& place);
    /// Chooses the first enabled item with that title, in submenus too.
    bool chooseFromMenu(const std::string& title);
    void closeMenu();

    [[nodiscard]] const Image& image() const noexcept { return image_; }
    [[nodiscard]] const std::string& toolTip() const noexcept { return toolTip_; }
    [[nodiscard]] const std::string& label() const noexcept { return label_; }
    [[nodiscard]] const std::string& autosaveName() const noexcept { return autosaveName_; }
    /// The open menu; null if no menu is open.
    [[nodiscard]] const view::Menu* menu() const noexcept { return menu_ ? &*menu_ : nullptr; }
    /// A number that grows with every change of what shows.
    [[nodiscard]] std::uint64_t revision() const noexcept { return revision_; }

    /// How long a new image takes: the program waits for the menu bar's host.
    std::chrono::milliseconds imageCost{8};
    /// The most images that were set within any second, and how many images looked like the one before.
    [[nodiscard]] std::size_t mostImagesInASecond() const noexcept { return mostImages_; }
    [[nodiscard]] std::size_t imagesInVain() const noexcept { return imagesInVain_; }

 private:
    [[nodiscard]] Click told(const SimulatedClick& click, SimulatedClick::Telling telling) const;
    void act(const Click& click);

    MachineThread& thread_;
    std::shared_ptr<std::function<void(Click)>> clicked_;
    Image image_;
    std::string toolTip_;
    std::string label_;
    std::string autosaveName_;
    std::optional<view::Menu> menu_;
    std::function<void()> menuClosed_;
    std::uint64_t revision_ = 0;
    std::size_t clicks_ = 0;
    std::deque<MainThread::Uptime> imagesSetAt_;  ///< within the last second
    std::size_t mostImages_ = 0;
    std::size_t imagesInVain_ = 0;
};

}  // namespace velko
