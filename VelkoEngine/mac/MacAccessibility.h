#pragma once

#import <ApplicationServices/ApplicationServices.h>
#include <chrono>
#include <memory>
#include <utility>

#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/mac/Conversions.h"

namespace velko {

/// A time-out as the system takes it.
[[nodiscard]] inline float inSeconds(Uptime timeout) {
    return std::chrono::duration<float>(timeout).count();
}

/// An element with its time-out, which the system keeps per element and does not hand down to children.
class MacElement final : public AXElement::Native {
 public:
    MacElement(CFRef<AXUIElementRef> ref, Uptime timeout) : ref_(std::move(ref)), timeout_(timeout) {
        AXUIElementSetMessagingTimeout(ref_.get(), inSeconds(timeout_));
    }

    [[nodiscard]] static AXElement make(CFRef<AXUIElementRef> ref, Uptime timeout) {
        return AXElement(std::make_shared<const MacElement>(std::move(ref), timeout));
    }
    [[nodiscard]] static const MacElement& of(const AXElement& element) {
        return static_cast<const MacElement&>(element.native());
    }

    [[nodiscard]] AXUIElementRef ref() const noexcept { return ref_.get(); }
    [[nodiscard]] Uptime timeout() const noexcept { return timeout_; }

 private:
    CFRef<AXUIElementRef> ref_;
    Uptime timeout_;
};

/// The system's Accessibility interface.
class MacAccessibility final : public Accessibility {
 public:
    /// `messagingTimeout` holds wherever an element has none of its own.
    explicit MacAccessibility(Uptime messagingTimeout);

    [[nodiscard]] bool isTrusted() const override;
    void promptForTrust() override;
    [[nodiscard]] AXElement application(ProcessID pid, Uptime messagingTimeout) const override;
    [[nodiscard]] std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                            const std::string& name) const override;
    [[nodiscard]] std::expected<std::vector<AXAnswer>, AXError> attributes(
        const AXElement& element, const std::vector<std::string>& names) const override;
    [[nodiscard]] std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& element) const override;
    [[nodiscard]] std::expected<ProcessID, AXError> pid(const AXElement& element) const override;
    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point point,
                                                              Uptime messagingTimeout) const override;
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& element,
                                                       const std::string& action) override;
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, Uptime messagingTimeout,
                                                      NotificationHandler handler) override;
};

/// Installs an observer on the main run loop; null when the system refuses. Main thread.
[[nodiscard]] std::unique_ptr<AXObserver> makeMacAXObserver(ProcessID pid, Uptime messagingTimeout,
                                                            Accessibility::NotificationHandler handler);

}  // namespace velko
