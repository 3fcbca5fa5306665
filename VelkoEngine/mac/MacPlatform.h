#pragma once

#include "VelkoCore/Import/PropertyList.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/Ports/Pointer.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Screen.h"
#include "VelkoEngine/Ports/Workspace.h"
#include "VelkoEngine/mac/MacAccessibility.h"
#include "VelkoEngine/mac/MacMainThread.h"
#include "VelkoEngine/mac/MacPrivateFramework.h"

namespace velko {

/// The screens as the window system reports them.
class MacDisplays final : public Displays {
 public:
    [[nodiscard]] std::vector<Display> displays() const override;
    [[nodiscard]] double statusBarThickness() const override;
    [[nodiscard]] Subscription observeChanges(std::function<void()> handler) override;
};

/// The window server's list.
class MacWindows final : public Windows {
 public:
    [[nodiscard]] std::optional<std::vector<WindowInfo>> onScreen() const override;
    [[nodiscard]] std::int64_t popUpMenuLevel() const override;
};

/// The mouse, as the window server's session sees it.
class MacPointer final : public Pointer {
 public:
    [[nodiscard]] std::unique_ptr<ClickTap> tapClicks(
        std::function<void(const ClickTapEvent&)> handler) override;
    [[nodiscard]] Point location() const override;
    [[nodiscard]] unsigned pressedButtons() const override;
    [[nodiscard]] Subscription observeMoves(std::function<void()> handler) override;
};

/// The kernel's process interface.
class MacProcesses final : public Processes {
 public:
    MacProcesses();

    [[nodiscard]] ProcessID ownPID() const override;
    [[nodiscard]] std::optional<std::vector<ProcessID>> list() const override;
    [[nodiscard]] std::optional<std::string> name(ProcessID pid) const override;
    [[nodiscard]] std::optional<ResourceUsage> resourceUsage(ProcessID pid) const override;
    [[nodiscard]] TimeBase timeBase() const override { return timeBase_; }
    [[nodiscard]] NullSignal nullSignal(ProcessID pid) const override;

 private:
    TimeBase timeBase_;
};

/// The shared workspace.
class MacWorkspace final : public Workspace {
 public:
    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<BundleID> bundleID(ProcessID pid) const override;
    [[nodiscard]] std::vector<ProcessID> pids(const BundleID& bundleID) const override;
    [[nodiscard]] std::optional<std::string> installedName(const BundleID& bundleID) const override;
    [[nodiscard]] std::vector<std::size_t> placesOf(const std::vector<std::string>& names) const override;
    [[nodiscard]] Subscription observe(std::function<void(const WorkspaceNotice&)> handler) override;
    void terminate(const BundleID& bundleID) override;
    bool openURL(const std::string& url) override;
};

/// Foundation's reader of property lists. Any thread.
class MacPropertyListReader final : public PropertyListReader {
 public:
    [[nodiscard]] std::expected<PropertyList, PropertyListError> read(
        std::span<const std::byte> bytes) const override;
};

/// Every port of the engine, bound to this Mac. Made and destroyed on the main thread; outlives all that
/// uses it.
class MacPlatform final : private NonCopyable {
 public:
    [[nodiscard]] Platform ports() noexcept {
        return {.mainThread = mainThread_,
                .accessibility = accessibility_,
                .workspace = workspace_,
                .displays = displays_,
                .pointer = pointer_,
                .processes = processes_,
                .windows = windows_,
                .privateFramework = privateFramework_,
                .activity = activity_};
    }

 private:
    MacMainThread mainThread_;
    MacAccessibility accessibility_{Timing::axMessagingTimeout};
    MacWorkspace workspace_;
    MacDisplays displays_;
    MacPointer pointer_;
    MacProcesses processes_;
    MacWindows windows_;
    MacPrivateFramework privateFramework_;
    MacActivity activity_;
};

}  // namespace velko
