#pragma once

#include "VelkoEngine/Ports/Accessibility.h"

namespace velko {

/// The system's Accessibility interface.
class MacAccessibility final : public Accessibility {
 public:
    /// `messagingTimeout`, in seconds, holds wherever an element has none of its own.
    explicit MacAccessibility(float messagingTimeout);

    [[nodiscard]] bool isTrusted() const override;
    void promptForTrust() override;
    [[nodiscard]] AXElement application(ProcessID pid, float messagingTimeout) const override;
    [[nodiscard]] std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                            const std::string& name) const override;
    [[nodiscard]] std::expected<std::vector<AXAnswer>, AXError> attributes(
        const AXElement& element, const std::vector<std::string>& names) const override;
    [[nodiscard]] std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& element) const override;
    [[nodiscard]] std::expected<ProcessID, AXError> pid(const AXElement& element) const override;
    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point point,
                                                              float messagingTimeout) const override;
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& element,
                                                       const std::string& action) override;
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, float messagingTimeout,
                                                      NotificationHandler handler) override;
};

}  // namespace velko
