#pragma once

#import <AppKit/AppKit.h>

#include <memory>
#include <optional>
#include <vector>

#include "Velko/Ports/Surfaces.h"
#include "Velko/mac/Images.h"
#import "Velko/mac/TreeView.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// What all surfaces have in common: a tree in a window, the keys that its buttons listen to, and the order
/// of the steps in which it closes.
class MacSurface : public Surface {
 public:
    void open(Opening opening) final;
    void update(view::Node content) final;
    void move(const Place& place) override;
    void raise() override;
    void close() final;
    [[nodiscard]] bool isOpen() const final { return opening_.has_value(); }
    [[nodiscard]] bool isInHand() const final { return tree_.isInHand; }
    [[nodiscard]] std::optional<Rect> frame() const final;

 protected:
    /// Both outlive this.
    MacSurface(MainThread& mainThread, AppIcons& icons) : mainThread_(mainThread), icons_(icons) {}

    /// Makes the window for a tree and shows it. Returns whether that worked.
    [[nodiscard]] virtual bool present(const Opening& opening, VLKTreeView* tree) = 0;
    /// The tree has changed and wants another size.
    virtual void resize(NSSize size) = 0;
    /// The tree has changed. Called before it is drawn.
    virtual void follow(const view::Node& /*content*/) {}
    /// Takes the window away.
    virtual void dismantle() = 0;
    /// Nil while there is none.
    [[nodiscard]] virtual NSWindow* window() const = 0;
    /// Whether Escape closes it when no button listens to that key.
    [[nodiscard]] virtual bool goesOnEscape() const = 0;

    [[nodiscard]] MainThread& mainThread() const noexcept { return mainThread_; }
    [[nodiscard]] VLKTreeView* tree() const noexcept { return tree_; }

    /// The user wants it to close: closes it, unless its controller is against that.
    void askToGo(Dismissal how);
    /// Does the same from now on for every click outside.
    void watchClicksOutside();

 private:
    void fit();
    void pressedOutside(NSEvent* press);
    [[nodiscard]] bool hear(NSEvent* key);
    void finish();

    MainThread& mainThread_;
    AppIcons& icons_;
    std::optional<Opening> opening_;
    VLKTreeView* tree_ = nil;
    NSSize size_{};
    Subscription keys_;
    Subscription clicksElsewhere_;
    Subscription clicksInOwnWindows_;
};

/// Velko's panels and windows.
class MacSurfaces final : public Surfaces {
 public:
    /// Both outlive this.
    MacSurfaces(MainThread& mainThread, AppIcons& icons);

    [[nodiscard]] Surface& surface(Kind kind) override;
    [[nodiscard]] bool reducesMotion() const override;
    void announce(const std::string& words) override;

 private:
    std::vector<std::unique_ptr<Surface>> surfaces_;  ///< in the order of `Kind`
};

}  // namespace velko
