#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/Pointer.h"

namespace velko::Contracts {

void checkPointer(const Platform& platform, Checks& checks) {
    const auto tap = platform.pointer.tapClicks([](const ClickTapEvent&) {});
    const bool isTrusted = platform.accessibility.isTrusted();
    expect(checks, "pointer: with the permission clicks can be listened for", !isTrusted || tap != nullptr,
           isTrusted ? "permission given" : "permission not given");
    if (tap) {
        tap->enable();
        const auto second = platform.pointer.tapClicks([](const ClickTapEvent&) {});
        expect(checks, "pointer: several may listen", second != nullptr);
    }
}

}  // namespace velko::Contracts
