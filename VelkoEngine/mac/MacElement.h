#pragma once

#import <ApplicationServices/ApplicationServices.h>
#include <memory>
#include <utility>

#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/mac/CFRef.h"

namespace velko {

/// An element with its time-out, which the system keeps per element and does not hand down to children.
class MacElement final : public AXElement::Native {
 public:
    MacElement(CFRef<AXUIElementRef> ref, float timeout) : ref_(std::move(ref)), timeout_(timeout) {
        AXUIElementSetMessagingTimeout(ref_.get(), timeout_);
    }

    [[nodiscard]] static AXElement make(CFRef<AXUIElementRef> ref, float timeout) {
        return AXElement(std::make_shared<const MacElement>(std::move(ref), timeout));
    }
    [[nodiscard]] static const MacElement& of(const AXElement& element) {
        return static_cast<const MacElement&>(element.native());
    }

    [[nodiscard]] AXUIElementRef ref() const noexcept { return ref_.get(); }
    [[nodiscard]] float timeout() const noexcept { return timeout_; }

 private:
    CFRef<AXUIElementRef> ref_;
    float timeout_;
};

}  // namespace velko
