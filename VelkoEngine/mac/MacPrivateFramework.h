#pragma once

#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko {

/// The dynamic loader and the object runtime. It catches every exception that a framework raises.
class MacPrivateFramework final : public PrivateFramework {
 public:
    [[nodiscard]] std::expected<void, std::string> open(const std::string& path) override;
    [[nodiscard]] bool hasClass(const std::string& className) const override;
    [[nodiscard]] bool instancesRespond(const std::string& className,
                                        const std::string& selector) const override;
    [[nodiscard]] std::optional<std::string> imagePath(const std::string& className) const override;
    [[nodiscard]] std::vector<std::string> loadedLibraries() const override;
    [[nodiscard]] std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException> methods(
        const std::string& imagePath) const override;
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& className, const std::vector<int>& allowedSystemItems,
        const std::vector<BundleID>& allowedBundleIDs) override;
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeAssertion(
        const std::string& className) override;
    [[nodiscard]] std::expected<void, RaisedException> activate(const ObjectRef& assertion,
                                                                const ObjectRef& configuration,
                                                                Activated completion) override;
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) override;
    void systemLog(const std::string& line) override;
};

}  // namespace velko
