#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velko/Ports/StatusItem.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

/// The broom as a person sees it and clicks on it.
class SimulatedStatusItem final : public StatusItem {
 public:
    explicit SimulatedStatusItem(MainThread& mainThread) : mainThread_(mainThread) {}

    void install(const std::string& autosaveName, const std::string& label,
                 std::function<void(Click)> clicked) override;
    void setImage(const Image& image) override;
    void setToolTip(const std::string& text) override;
    void openMenu(view::Menu menu) override;

    /// A button goes up over the icon. An open menu takes the click, and closes.
    void click(Click click = {});
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

 private:
    MainThread& mainThread_;
    std::shared_ptr<std::function<void(Click)>> clicked_;
    Image image_;
    std::string toolTip_;
    std::string label_;
    std::string autosaveName_;
    std::optional<view::Menu> menu_;
    std::uint64_t revision_ = 0;
};

}  // namespace velko
