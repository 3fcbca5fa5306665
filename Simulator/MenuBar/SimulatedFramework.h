#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Simulator/Time/SimulatedMainThread.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko {

/// What may stay in the menu bar while an assertion is in force.
struct SimulatedAllowlist {
    std::vector<int> systemItems;
    std::vector<BundleID> bundleIDs;

    bool operator==(const SimulatedAllowlist&) const = default;
};

/// The assessment framework of a simulated Mac.
///
/// These are assumptions about the real one. An assertion is in force from its answer until it is invalidated
/// or released, whichever comes first. If there are several, the newest counts. If one is invalidated before
/// its answer, the answer is a refusal. If one is released before its answer, no answer comes.
class SimulatedFramework final : public PrivateFramework {
 public:
    /// A time in which everything showed although Velko went on hiding: the next assertion was asked for
    /// before the last one ended, or at the same moment. (If it is asked for later, hiding has begun again.)
    struct Gap {
        MainThread::Uptime from;
        MainThread::Uptime to;
    };

    /// `inForceChanged` is called whenever a different allowlist comes into force, or none.
    SimulatedFramework(MachineThread& mainThread, std::function<void()> inForceChanged);
    ~SimulatedFramework() override;

    [[nodiscard]] std::expected<void, std::string> open(const std::string& libraryPath) override;
    [[nodiscard]] bool hasClass(const std::string& className) const override;
    [[nodiscard]] bool instancesRespond(const std::string& className,
                                        const std::string& selector) const override;
    [[nodiscard]] std::optional<std::string> imagePath(const std::string& className) const override;
    [[nodiscard]] std::vector<std::string> loadedLibraries() const override;
    [[nodiscard]] std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException> methods(
        const std::string& libraryPath) const override;
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& className, const std::vector<int>& allowedSystemItems,
        const std::vector<BundleID>& allowedBundleIDs) override;
    [[nodiscard]] std::expected<ObjectRef, RaisedException> makeAssertion(
        const std::string& className) override;
    [[nodiscard]] std::expected<void, RaisedException> activate(const ObjectRef& assertion,
                                                                const ObjectRef& configuration,
                                                                Activated completion) override;
    [[nodiscard]] std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) override;
    void systemLog(const std::string& line) override { systemLogLines_.push_back(line); }

    // The framework that this machine has. Tests and scenarios may change these members.
    std::string path;                           ///< the path with which its library is opened
    std::string image;                          ///< the path under which the loader then knows it
    bool installed = true;                      ///< whether it can be loaded
    std::string loadError = "image not found";  ///< what the loader says if it cannot be loaded
    std::map<std::string, std::vector<RuntimeMethod>> classes;  ///< remove what a build does not have
    static constexpr MainThread::Uptime usualDelay = std::chrono::milliseconds(40);
    MainThread::Uptime answerDelay = usualDelay;
    std::optional<FrameworkError> refusal;      ///< activations are refused with it, after the delay
    std::optional<std::uint64_t> refusalsLeft;  ///< how many of them; without a value: all
    std::optional<RaisedException> exception;   ///< every activation raises it at once

    /// The allowlist in force; nothing while everything is shown.
    [[nodiscard]] std::optional<SimulatedAllowlist> inForce() const;
    /// Assertions that are active and not invalidated.
    [[nodiscard]] std::size_t activeAssertions() const;
    [[nodiscard]] std::uint64_t activations() const noexcept { return activations_; }
    [[nodiscard]] std::uint64_t invalidations() const noexcept { return invalidations_; }
    /// Activations that wait for their answer.
    [[nodiscard]] std::uint64_t unanswered() const noexcept { return unanswered_; }
    /// Every gap so far. A gap of zero length counts too, because everything showed for a moment.
    [[nodiscard]] const std::vector<Gap>& gaps() const;
    [[nodiscard]] const std::vector<std::string>& systemLogLines() const noexcept { return systemLogLines_; }

 private:
    class Configuration;
    class Assertion;
    struct Ledger;

    void answer(const std::weak_ptr<Object>& assertion, const SimulatedAllowlist& allowlist,
                MainThread::Uptime askedAt, const Activated& completion);

    MachineThread& mainThread_;
    std::shared_ptr<Ledger> ledger_;
    bool loaded_ = false;
    std::uint64_t activations_ = 0;
    std::uint64_t invalidations_ = 0;
    std::uint64_t unanswered_ = 0;
    std::vector<std::string> systemLogLines_;
};

}  // namespace velko
