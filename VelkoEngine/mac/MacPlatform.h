#pragma once

#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Timing.h"
#include "VelkoEngine/Ports/Platform.h"
#include "VelkoEngine/mac/MacAccessibility.h"
#include "VelkoEngine/mac/MacActivity.h"
#include "VelkoEngine/mac/MacDisplays.h"
#include "VelkoEngine/mac/MacMainThread.h"
#include "VelkoEngine/mac/MacPointer.h"
#include "VelkoEngine/mac/MacPrivateFramework.h"
#include "VelkoEngine/mac/MacProcesses.h"
#include "VelkoEngine/mac/MacWindows.h"
#include "VelkoEngine/mac/MacWorkspace.h"

namespace velko {

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
