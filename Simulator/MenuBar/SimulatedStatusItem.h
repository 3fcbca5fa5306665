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

    /// The icon's action runs for a click. An open menu takes it, and closes.
    void click(const SimulatedClick& click = {});
    /// A person who uses VoiceOver, and holds its two keys, presses the icon.
    void pressByVoiceOver();
    /// The user picks from the open menu, which closes; whether there was something to pick.
    bool chooseFromMenu(const std::vector<std::size_t>& place);
    /// Picks the first enabled item with that title, in submenus too.
    bool chooseFromMenu(const std::string& title);
    void closeMenu();

    [[nodiscard]] const Image& image() const noexcept { return image_; }
    [[nodiscard]] const std::string& toolTip() const noexcept { return toolTip_; }
    [[nodiscard]] const std::string& label() const noexcept { return label_; }
    [[nodiscard]] const std::string& autosaveName() const noexcept { return autosaveName_; }
    /// The open menu; null while none is.
    [[nodiscard]] const view::Menu* menu() const noexcept { return menu_ ? &*menu_ : nullptr; }
    /// Grows with every change of what shows.
    [[nodiscard]] std::uint64_t revision() const noexcept { return revision_; }

    /// What a new image costs the program: a round trip through the host of the menu bar.
    std::chrono::milliseconds imageCost{8};
    /// The most images that it has set within any second, and those that looked like the one before.
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
