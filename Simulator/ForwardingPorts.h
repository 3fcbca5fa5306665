#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/PrivateFramework.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko {

/// Passes every call on. A decorator derives from it and changes one call.
class ForwardingAccessibility : public Accessibility {
 public:
    explicit ForwardingAccessibility(Accessibility& next) : next_(next) {}

    [[nodiscard]] bool isTrusted() const override { return next_.isTrusted(); }
    void promptForTrust() override { next_.promptForTrust(); }
    [[nodiscard]] AXElement application(ProcessID pid, Uptime messagingTimeout) const override {
        return next_.application(pid, messagingTimeout);
    }
    [[nodiscard]] std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                            const std::string& name) const override {
        return next_.attribute(element, name);
    }
    [[nodiscard]] std::expected<std::vector<AXAnswer>, AXError> attributes(
        const AXElement& element, const std::vector<std::string>& names) const override {
        return next_.attributes(element, names);
    }
    [[nodiscard]] std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& element) const override {
        return next_.attributeNames(element);
    }
    [[nodiscard]] std::expected<ProcessID, AXError> pid(const AXElement& element) const override {
        return next_.pid(element);
    }
    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point point,
                                                              Uptime messagingTimeout) const override {
        return next_.elementAt(point, messagingTimeout);
    }
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& element,
                                                       const std::string& action) override {
        return next_.perform(element, action);
    }
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID pid, Uptime messagingTimeout,
                                                      NotificationHandler handler) override {
        return next_.observe(pid, messagingTimeout, std::move(handler));
    }

 private:
    Accessibility& next_;
};

/// Passes every call on. A decorator derives from it and changes one call.
class ForwardingWorkspace : public Workspace {
 public:
    explicit ForwardingWorkspace(Workspace& next) : next_(next) {}

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override {
        return next_.runningApplications();
    }
    [[nodiscard]] std::optional<BundleID> bundleID(ProcessID pid) const override {
        return next_.bundleID(pid);
    }
    [[nodiscard]] std::vector<ProcessID> pids(const BundleID& bundleID) const override {
        return next_.pids(bundleID);
    }
    [[nodiscard]] std::optional<std::string> installedName(const BundleID& bundleID) const override {
        return next_.installedName(bundleID);
    }
    [[nodiscard]] std::vector<std::size_t> placesOf(const std::vector<std::string>& names) const override {
        return next_.placesOf(names);
    }
    [[nodiscard]] Subscription observe(std::function<void(const WorkspaceNotice&)> handler) override {
        return next_.observe(std::move(handler));
    }
    void terminate(const BundleID& bundleID) override { next_.terminate(bundleID); }
    bool openURL(const std::string& url) override { return next_.openURL(url); }

 private:
    Workspace& next_;
};

/// Passes every call on. A decorator derives from it and changes one call.
class ForwardingFramework : public PrivateFramework {
 public:
    explicit ForwardingFramework(PrivateFramework& next) : next_(next) {}

    [[nodiscard]] std::expected<void, std::string> open(const std::string& path) override {
        return next_.open(path);
    }
    [[nodiscard]] bool hasClass(const std::string& className) const override {
        return next_.hasClass(className);
    }
    [[nodiscard]] bool instancesRespond(const std::string& className,
                                        const std::string& selector) const override {
        return next_.instancesRespond(className, selector);
    }
    [[nodiscard]] std::optional<std::string> imagePath(const std::string& className) const override {
        return next_.imagePath(className);
    }
    [[nodiscard]] std::vector<std::string> loadedLibraries() const override {
        return next_.loadedLibraries();
    }
    [[nodiscard]] std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException> methods(
        const std::string& imagePath) const override {
        return next_.methods(imagePath);
    }
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& className, const std::vector<int>& allowedSystemItems,
        const std::vector<BundleID>& allowedBundleIDs) override {
        return next_.makeConfiguration(className, allowedSystemItems, allowedBundleIDs);
    }
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeAssertion(
        const std::string& className) override {
        return next_.makeAssertion(className);
    }
    [[nodiscard]] std::expected<void, RaisedException> activate(const ObjectRef& assertion,
                                                                const ObjectRef& configuration,
                                                                Activated completion) override {
        return next_.activate(assertion, configuration, std::move(completion));
    }
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) override {
        return next_.invalidate(assertion);
    }
    void systemLog(const std::string& line) override { next_.systemLog(line); }

 private:
    PrivateFramework& next_;
};

}  // namespace velko
