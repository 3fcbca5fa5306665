#include "Velko/Checks/SampleMac.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "Velko/Checks/SampleDesktop.h"
#include "VelkoEngine/Ports/Accessibility.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/PrivateFramework.h"
#include "VelkoEngine/Ports/Processes.h"
#include "VelkoEngine/Ports/Workspace.h"

namespace velko::SelfCheck {

std::vector<SampleApp> sampleApps(std::size_t count) {
    static constexpr std::array<std::string_view, 7> names{
        "Clock",          "Mail",       "A Name of Many Words That Is Too Long for Its Tile",
        "日本語のアプリ", "Wörterbuch", "VPN",
        "Weather"};
    std::vector<SampleApp> apps;
    for (std::size_t index = 0; index < count; ++index) {
        const std::string number = std::to_string(index + 1);
        apps.push_back({.pid = static_cast<ProcessID>(900'000 + index),
                        .bundleID = "com.example.sample" + number,
                        .name = std::string(names.at(index % names.size())) + " " + number});
    }
    return apps;
}

/// The application, its bar of icons, or its icon.
class SampleElement final : public AXElement::Native {
 public:
    enum class Part { application, bar, icon };

    SampleElement(ProcessID owner, Part which) : pid(owner), part(which) {}

    [[nodiscard]] static AXElement make(ProcessID pid, Part part) {
        return AXElement(std::make_shared<const SampleElement>(pid, part));
    }
    [[nodiscard]] static const SampleElement& of(const AXElement& element) {
        return static_cast<const SampleElement&>(element.native());
    }

    ProcessID pid;
    Part part;
};

class SampleAccessibility final : public Accessibility {
 public:
    SampleAccessibility(std::vector<SampleApp> apps, ProcessID own, bool isTrusted)
        : apps_(std::move(apps)), own_(own), isTrusted_(isTrusted) {}

    [[nodiscard]] bool isTrusted() const override { return isTrusted_; }
    void promptForTrust() override {}
    [[nodiscard]] AXElement application(ProcessID pid, Uptime /*messagingTimeout*/) const override {
        return SampleElement::make(pid, SampleElement::Part::application);
    }
    [[nodiscard]] std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                            const std::string& name) const override;
    [[nodiscard]] std::expected<std::vector<AXAnswer>, AXError> attributes(
        const AXElement& element, const std::vector<std::string>& names) const override {
        std::vector<AXAnswer> answers;
        std::ranges::transform(names, std::back_inserter(answers),
                               [&](const std::string& name) { return attribute(element, name); });
        return answers;
    }
    [[nodiscard]] std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& /*element*/) const override {
        return std::vector<std::string>{"AXRole"};
    }
    [[nodiscard]] std::expected<ProcessID, AXError> pid(const AXElement& element) const override {
        return SampleElement::of(element).pid;
    }
    [[nodiscard]] std::expected<AXElement, AXError> elementAt(Point /*point*/,
                                                              Uptime /*messagingTimeout*/) const override {
        return std::unexpected(AXError::noValue);
    }
    [[nodiscard]] std::expected<void, AXError> perform(const AXElement& /*element*/,
                                                       const std::string& /*action*/) override {
        return std::unexpected(AXError::actionUnsupported);
    }
    [[nodiscard]] std::unique_ptr<AXObserver> observe(ProcessID /*pid*/, Uptime /*messagingTimeout*/,
                                                      NotificationHandler /*handler*/) override {
        return nullptr;
    }

 private:
    std::vector<SampleApp> apps_;
    ProcessID own_;
    bool isTrusted_;
};

std::expected<AXValue, AXError> SampleAccessibility::attribute(const AXElement& element,
                                                               const std::string& name) const {
    using Part = SampleElement::Part;
    const auto& [pid, part] = std::pair(SampleElement::of(element).pid, SampleElement::of(element).part);
    const auto app = std::ranges::find(apps_, pid, &SampleApp::pid);
    if (!isTrusted_ && pid != own_) {
        return std::unexpected(AXError::apiDisabled);
    }
    if (app == apps_.end() && pid != own_) {
        return std::unexpected(AXError::invalidElement);
    }
    const double place = static_cast<double>(app - apps_.begin());
    if (part == Part::application && name == "AXRole") {
        return "AXApplication";
    }
    if (part == Part::application && name == "AXExtrasMenuBar") {
        return SampleElement::make(pid, Part::bar);
    }
    if (part == Part::bar && name == "AXChildren") {
        return std::vector{SampleElement::make(pid, Part::icon)};
    }
    if (part == Part::icon && name == "AXPosition") {
        return Point{.x = 300 + 10 * place, .y = 2};
    }
    if (part == Part::icon && name == "AXSize") {
        return Size{.width = 10, .height = 20};
    }
    return std::unexpected(AXError::attributeUnsupported);
}

class SampleWorkspace final : public Workspace {
 public:
    SampleWorkspace(std::vector<SampleApp> apps, ProcessID own) : apps_(std::move(apps)), own_(own) {}

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override {
        std::vector<RunningApplication> running{{.pid = own_,
                                                 .bundleID = "app.velko.mac",
                                                 .bundlePath = "/Applications/Velko.app",
                                                 .localizedName = {}}};
        for (const SampleApp& app : apps_) {
            running.push_back({.pid = app.pid,
                               .bundleID = app.bundleID,
                               .bundlePath = "/Applications/" + app.bundleID + ".app",
                               .localizedName = app.name});
        }
        return running;
    }
    [[nodiscard]] std::optional<BundleID> bundleID(ProcessID pid) const override {
        const auto app = std::ranges::find(apps_, pid, &SampleApp::pid);
        return app == apps_.end() ? std::nullopt : std::optional(app->bundleID);
    }
    [[nodiscard]] std::vector<ProcessID> pids(const BundleID& bundleID) const override {
        const auto app = std::ranges::find(apps_, bundleID, &SampleApp::bundleID);
        return app == apps_.end() ? std::vector<ProcessID>() : std::vector{app->pid};
    }
    [[nodiscard]] std::optional<std::string> installedName(const BundleID& bundleID) const override {
        const auto app = std::ranges::find(apps_, bundleID, &SampleApp::bundleID);
        return app == apps_.end() ? std::nullopt : std::optional(app->name);
    }
    [[nodiscard]] Subscription observe(std::function<void(const WorkspaceNotice&)> /*handler*/) override {
        return Subscription([] {});
    }
    void terminate(const BundleID& /*bundleID*/) override {}
    bool openURL(const std::string& /*url*/) override { return false; }

 private:
    std::vector<SampleApp> apps_;
    ProcessID own_;
};

class SampleProcesses final : public Processes {
 public:
    explicit SampleProcesses(ProcessID own) : own_(own) {}

    [[nodiscard]] ProcessID ownPID() const override { return own_; }
    [[nodiscard]] std::optional<std::vector<ProcessID>> list() const override { return std::vector{own_}; }
    [[nodiscard]] std::optional<std::string> name(ProcessID /*pid*/) const override { return std::nullopt; }
    [[nodiscard]] std::optional<ResourceUsage> resourceUsage(ProcessID /*pid*/) const override {
        return ResourceUsage{.userTime = 1, .systemTime = 1, .physicalFootprint = 734'003'200};
    }
    [[nodiscard]] TimeBase timeBase() const override { return {.numerator = 1, .denominator = 1}; }
    [[nodiscard]] NullSignal nullSignal(ProcessID /*pid*/) const override { return NullSignal::delivered; }

 private:
    ProcessID own_;
};

/// Accepts everything, and hides nothing.
class SampleFramework final : public PrivateFramework {
 public:
    [[nodiscard]] std::expected<void, std::string> open(const std::string& /*path*/) override { return {}; }
    [[nodiscard]] bool hasClass(const std::string& /*className*/) const override { return true; }
    [[nodiscard]] bool instancesRespond(const std::string& /*className*/,
                                        const std::string& /*selector*/) const override {
        return true;
    }
    [[nodiscard]] std::optional<std::string> imagePath(const std::string& /*className*/) const override {
        return std::nullopt;
    }
    [[nodiscard]] std::vector<std::string> loadedLibraries() const override { return {}; }
    [[nodiscard]] std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException> methods(
        const std::string& /*imagePath*/) const override {
        return {};
    }
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& /*className*/, const std::vector<int>& /*allowedSystemItems*/,
        const std::vector<BundleID>& /*allowedBundleIDs*/) override {
        return std::make_shared<Thing>();
    }
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeAssertion(
        const std::string& /*className*/) override {
        return std::make_shared<Thing>();
    }
    [[nodiscard]] std::expected<void, RaisedException> activate(const ObjectRef& /*assertion*/,
                                                                const ObjectRef& /*configuration*/,
                                                                Activated completion) override {
        completion(std::nullopt);
        return {};
    }
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& /*assertion*/) override {
        return {};
    }
    void systemLog(const std::string& /*line*/) override {}

 private:
    class Thing final : public Object {};
};

struct SampleMac::Ports {
    Ports(const Platform& real, const std::vector<SampleApp>& apps, bool isTrusted)
        : accessibility(apps, real.processes.ownPID(), isTrusted),
          workspace(apps, real.processes.ownPID()),
          processes(real.processes.ownPID()),
          surfaces(real.mainThread) {}

    SampleAccessibility accessibility;
    SampleWorkspace workspace;
    SamplePointer pointer{};
    SampleProcesses processes;
    SampleFramework framework{};
    SampleApplication application{};
    SampleDoor commands{};
    SampleDefaults defaults{};
    SampleDialogs dialogs{};
    SampleHotKeys hotKeys{};
    SampleLoginItem loginItem{};
    SamplePasteboard pasteboard{};
    SampleStatusItem statusItem{};
    SampleSurfaces surfaces;
    SampleUpdater updater{};
};

SampleMac::SampleMac(const Platform& real, const std::vector<SampleApp>& apps, bool isTrusted)
    : real_(real), ports_(std::make_unique<Ports>(real, apps, isTrusted)) {}

SampleMac::~SampleMac() = default;

Platform SampleMac::platform() const {
    return {.mainThread = real_.mainThread,
            .accessibility = ports_->accessibility,
            .workspace = ports_->workspace,
            .displays = real_.displays,
            .pointer = ports_->pointer,
            .processes = ports_->processes,
            .windows = real_.windows,
            .privateFramework = ports_->framework,
            .activity = real_.activity};
}

AppPorts SampleMac::appPorts() const {
    return {.application = ports_->application,
            .commands = ports_->commands,
            .defaults = ports_->defaults,
            .dialogs = ports_->dialogs,
            .hotKeys = ports_->hotKeys,
            .loginItem = ports_->loginItem,
            .pasteboard = ports_->pasteboard,
            .statusItem = ports_->statusItem,
            .surfaces = ports_->surfaces,
            .updater = ports_->updater};
}

void SampleMac::click(bool isRight) {
    ports_->statusItem.click(isRight);
}

const view::Menu& SampleMac::menu() const {
    return ports_->statusItem.menu();
}

const view::Node* SampleMac::tree(Surfaces::Kind kind) const {
    return ports_->surfaces.tree(kind);
}

void SampleMac::close(Surfaces::Kind kind) {
    ports_->surfaces.surface(kind).close();
}

}  // namespace velko::SelfCheck
