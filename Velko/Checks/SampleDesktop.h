#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velko/Ports/CommandDoor.h"
#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Dialogs.h"
#include "Velko/Ports/HotKeys.h"
#include "Velko/Ports/StatusItem.h"
#include "Velko/Ports/Surfaces.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Task.h"

/// The imaginary Mac's desktop. Nothing that Velko does there has an effect, but that surfaces keep their
/// trees. Main thread.
namespace velko::SelfCheck {

class SamplePointer final : public Pointer {
 public:
    [[nodiscard]] std::unique_ptr<ClickTap> tapClicks(
        std::function<void(const ClickTapEvent&)> /*handler*/) override {
        return nullptr;
    }
    [[nodiscard]] Point location() const override { return {}; }
    [[nodiscard]] unsigned pressedButtons() const override { return 0; }
    [[nodiscard]] Subscription observeMoves(std::function<void()> /*handler*/) override {
        return Subscription([] {});
    }
};

class SampleApplication final : public Application {
 public:
    [[nodiscard]] Policy policy() const override { return policy_; }
    void setPolicy(Policy policy) override { policy_ = policy; }
    void showDockIcon() override {}
    void activate() override {}
    void terminate() override {}
    void openFile(const std::filesystem::path& /*file*/,
                  const std::optional<std::filesystem::path>& /*application*/) override {}
    [[nodiscard]] Outcome moveToTrash(const std::filesystem::path& /*file*/) override { return {}; }
    [[nodiscard]] Outcome copy(const std::filesystem::path& /*from*/,
                               const std::filesystem::path& /*to*/) override {
        return {};
    }
    void openAnother(const std::filesystem::path& /*program*/,
                     std::function<void(const Outcome&)> /*done*/) override {}

 private:
    Policy policy_ = Policy::accessory;
};

/// Nobody comes in.
class SampleDoor final : public CommandDoor {
 public:
    [[nodiscard]] std::expected<void, std::string> open(Handlers /*handlers*/) override { return {}; }
    void close() override {}
    void send(Caller /*caller*/, const std::string& /*lines*/) override {}
    void hangUp(Caller /*caller*/) override {}
};

/// Takes every combination, and never hears of one.
class SampleHotKeys final : public HotKeys {
 public:
    [[nodiscard]] std::expected<Subscription, Refusal> add(const KeyCombination& /*keys*/,
                                                           std::function<void()> /*pressed*/) override {
        return Subscription([] {});
    }
    [[nodiscard]] bool isOfSystem(const KeyCombination& /*keys*/) const override { return false; }
    [[nodiscard]] std::optional<std::string> typedBy(KeyCode /*key*/) const override { return std::nullopt; }
    [[nodiscard]] Subscription observeLayout(std::function<void()> /*handler*/) override {
        return Subscription([] {});
    }
};

class SampleDefaults final : public Defaults {
 public:
    [[nodiscard]] bool isOn(const std::string& /*key*/) const override { return true; }
    void setOn(const std::string& /*key*/, bool /*on*/) override {}
    [[nodiscard]] std::string text(const std::string& /*key*/) const override { return {}; }
    void setText(const std::string& /*key*/, const std::string& /*text*/) override {}
};

class SampleDialogs final : public Dialogs {
 public:
    [[nodiscard]] Task chooseWhereToSave(const SavePanel& /*panel*/, Chosen /*chosen*/) override {
        return {};
    }
    [[nodiscard]] Task chooseFileToOpen(const OpenPanel& /*panel*/, Chosen /*chosen*/) override { return {}; }
    void alert(const Alert& /*alert*/) override {}
    [[nodiscard]] Task ask(const Question& /*question*/, Answered /*answered*/) override { return {}; }
};

class SampleLoginItem final : public LoginItem {
 public:
    [[nodiscard]] Status status() const override { return Status::enabled; }
    [[nodiscard]] std::expected<void, std::string> setEnabled(bool /*enabled*/) override { return {}; }
};

class SamplePasteboard final : public Pasteboard {
 public:
    void setText(const std::string& /*text*/) override {}
};

class SampleUpdater final : public Updater {
 public:
    [[nodiscard]] std::optional<std::string> whyUnavailable() const override { return missing; }
    [[nodiscard]] bool checkForUpdates() override { return false; }
};

class SampleStatusItem final : public StatusItem {
 public:
    void install(const std::string& /*autosaveName*/, const std::string& /*label*/,
                 std::function<void(Click)> clicked) override {
        clicked_ = std::move(clicked);
    }
    void setImage(const Image& /*image*/) override {}
    void setToolTip(const std::string& /*text*/) override {}
    void openMenu(view::Menu menu, std::function<void()> closed) override {
        menu_ = std::move(menu);
        closed();
    }
    [[nodiscard]] bool isMenuOpen() const override { return false; }
    [[nodiscard]] const view::Menu& menu() const noexcept { return menu_; }
    void click(bool isRight) const {
        if (clicked_) {
            clicked_({.event = Event{.type = isRight ? Event::Type::rightMouse : Event::Type::leftMouse}});
        }
    }

 private:
    std::function<void(Click)> clicked_;
    view::Menu menu_;
};

/// Keeps its tree instead of showing it.
class SampleSurface final : public Surface {
 public:
    explicit SampleSurface(MainThread& mainThread) : mainThread_(mainThread) {}

    void open(Opening opening) override {
        close();
        tree_ = std::move(opening.content);
        closed_ = std::move(opening.closed);
    }
    void update(view::Node content) override {
        if (tree_) {
            tree_ = std::move(content);
        }
    }
    void move(const Place& /*place*/) override {}
    void raise() override {}
    void close() override {
        if (std::exchange(tree_, std::nullopt) && closed_) {
            telling_ = mainThread_.after({}, std::exchange(closed_, nullptr));
        }
    }
    [[nodiscard]] bool isOpen() const override { return tree_.has_value(); }
    [[nodiscard]] bool isInHand() const override { return false; }
    [[nodiscard]] std::optional<Rect> frame() const override {
        return tree_ ? std::optional(Rect{.x = 100, .y = 100, .width = 400, .height = 300}) : std::nullopt;
    }
    [[nodiscard]] const view::Node* tree() const { return tree_ ? &*tree_ : nullptr; }

 private:
    MainThread& mainThread_;
    std::optional<view::Node> tree_;
    std::function<void()> closed_;
    Task telling_;
};

class SampleSurfaces final : public Surfaces {
 public:
    explicit SampleSurfaces(MainThread& mainThread) {
        for (std::size_t kind = 0; kind < all().size(); ++kind) {
            surfaces_.push_back(std::make_unique<SampleSurface>(mainThread));
        }
    }

    [[nodiscard]] Surface& surface(Kind kind) override {
        return *surfaces_.at(static_cast<std::size_t>(kind));
    }
    [[nodiscard]] bool reducesMotion() const override { return true; }
    void announce(const std::string& /*words*/) override {}
    [[nodiscard]] const view::Node* tree(Kind kind) const {
        return surfaces_.at(static_cast<std::size_t>(kind))->tree();
    }

 private:
    std::vector<std::unique_ptr<SampleSurface>> surfaces_;
};

}  // namespace velko::SelfCheck
