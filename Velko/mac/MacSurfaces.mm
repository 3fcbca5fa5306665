#import "Velko/mac/MacSurfaces.h"

#include <cstddef>
#include <utility>

#import "Velko/mac/FloatingPanel.h"
#include "Velko/mac/Keys.h"
#import "Velko/mac/RunLoop.h"
#import "Velko/mac/StandardWindow.h"
#include "VelkoEngine/mac/Conversions.h"
#import "VelkoEngine/mac/Observers.h"

namespace velko {

namespace {

constexpr NSEventMask buttonsDown = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;

}  // namespace

void MacSurface::open(Opening opening) {
    close();
    opening_ = std::move(opening);
    tree_ = [[VLKTreeView alloc] initWithMainThread:mainThread_ icons:icons_];
    [tree_ show:opening_->content];
    keys_ = monitorOwnEvents(NSEventMaskKeyDown, [this](NSEvent* event) { return hear(event); });
    size_ = [tree_ fit];
    [tree_ setFrameSize:size_];
    if (present(*opening_, tree_)) {
        fit();  // again: only now is it known on which screen it is
        [tree_ focusFieldOrAny:NO];
    } else {
        close();
    }
}

void MacSurface::update(view::Node content) {
    if (!opening_) {
        return;
    }
    follow(content);
    [tree_ show:std::move(content)];
    fit();
}

void MacSurface::fit() {
    const NSSize size = [tree_ fit];
    if (size.width != size_.width || size.height != size_.height) {
        size_ = size;
        resize(size);
    }
}

void MacSurface::move(const Place& /*place*/) {}

void MacSurface::raise() {}

void MacSurface::close() {
    if (opening_) {
        dismantle();
        finish();
    }
}

std::optional<Rect> MacSurface::frame() const {
    NSWindow* current = window();
    return opening_ && current != nil ? std::optional(portable(current.frame)) : std::nullopt;
}

void MacSurface::finish() {
    keys_.end();
    clicksElsewhere_.end();
    clicksInOwnWindows_.end();
    auto closed = std::move(opening_->closed);
    opening_.reset();
    icons_.forget();
    [tree_ stop];
    // The user may have closed it with one of its buttons, and that button's action has not returned yet.
    VLKTreeView* tree = std::exchange(tree_, nil);
    mainThread_.post([tree, closed = std::move(closed)]() mutable {
        tree = nil;
        if (closed) {
            closed();
        }
    });
}

void MacSurface::askToGo(Dismissal how) {
    if (!opening_) {
        return;
    }
    const auto mayGo = opening_->dismiss;
    if (!mayGo || mayGo(how)) {
        close();
    }
}

void MacSurface::watchClicksOutside() {
    clicksElsewhere_ = monitorOthersEvents(buttonsDown, [this](NSEvent* press) { pressedOutside(press); });
    // A click in another of this program's windows is outside as well.
    clicksInOwnWindows_ = monitorOwnEvents(buttonsDown, [this](NSEvent* press) {
        if (press.window != window()) {
            pressedOutside(press);
        }
        return false;
    });
}

void MacSurface::pressedOutside(NSEvent* press) {
    // The place of an event that hits no window of this program is measured on the screen.
    const NSPoint where = press.window == nil ? press.locationInWindow
                                              : [press.window convertPointToScreen:press.locationInWindow];
    if (opening_ && !(opening_->ignoresPress && opening_->ignoresPress(portable(where)))) {
        askToGo(Dismissal::clickOutside);
    }
}

bool MacSurface::hear(NSEvent* key) {
    if (!opening_ || key.window == nil || key.window != window()) {
        return false;
    }
    if (const auto told = opening_->keyPressed) {
        told();
    }
    if ([tree_ recordKeysOf:key] || [tree_ pressFieldKeyOf:key] || [tree_ pressKeyOf:key] ||
        [tree_ walkTilesByKeyOf:key] || [tree_ pressMenuKeyOf:key] ||
        (menuKeyOf(key) == 'f' && [tree_ focusFieldOrAny:YES])) {
        return true;
    }
    const auto shortcut = shortcutOf(key);
    if (goesOnEscape() && shortcut == view::Shortcut{.key = view::Shortcut::Key::escape}) {
        askToGo(Dismissal::escape);
        return true;
    }
    return false;
}

MacSurfaces::MacSurfaces(MainThread& mainThread, AppIcons& icons) {
    for (const Traits& traits : all()) {
        if (traits.isWindow()) {
            surfaces_.push_back(std::make_unique<StandardWindow>(mainThread, icons, traits));
        } else {
            surfaces_.push_back(std::make_unique<FloatingPanel>(mainThread, icons, traits));
        }
    }
}

Surface& MacSurfaces::surface(Kind kind) {
    return *surfaces_.at(static_cast<std::size_t>(kind));
}

bool MacSurfaces::reducesMotion() const {
    return [NSWorkspace sharedWorkspace].accessibilityDisplayShouldReduceMotion;
}

void MacSurfaces::announce(const std::string& words) {
    constexpr NSAccessibilityPriorityLevel priority = NSAccessibilityPriorityHigh;
    NSDictionary* info = @{
        NSAccessibilityAnnouncementKey : native(words),
        NSAccessibilityPriorityKey : @(static_cast<int>(priority))
    };
    // One turn later: when a window opens or closes in this turn, the system would not speak.
    onMainRunLoop(^{
      NSApplication* application = [NSApplication sharedApplication];
      id speaker = application.keyWindow;
      NSAccessibilityPostNotificationWithUserInfo(speaker == nil ? application : speaker,
                                                  NSAccessibilityAnnouncementRequestedNotification, info);
    });
}

}  // namespace velko
