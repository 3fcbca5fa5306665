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
/// Assumed of the real one: an assertion is in force from the moment when it answers until it is
/// invalidated or let go, whichever comes first; of several the newest counts; one that is invalidated
/// before its answer is refused; one that is let go before its answer never answers.
class SimulatedFramework final : public PrivateFramework {
 public:
    /// A stretch of uptime in which everything was shown amid hiding: the next assertion had been asked for
    /// when the last one ended, or was at that same instant. (Asked for later, it is hiding begun anew.)
    struct Gap {
        MainThread::Uptime from;
        MainThread::Uptime to;
    };

    /// `inForceChanged` is called whenever another allowlist, or none, comes into force.
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

    // The framework that this machine has. Tests and scenarios change it at will.
    std::string path;                                           ///< by which its library is opened
    std::string image;                                          ///< under which the loader knows it then
    bool installed = true;                                      ///< whether it can be loaded
    std::string loadError = "image not found";                  ///< the loader's words if it can't
    std::map<std::string, std::vector<RuntimeMethod>> classes;  ///< take out what a build lacks
    static constexpr MainThread::Uptime usualDelay = std::chrono::milliseconds(40);
    MainThread::Uptime answerDelay = usualDelay;
    std::optional<FrameworkError> refusal;      ///< activations are refused with it, after the delay
    std::optional<std::uint64_t> refusalsLeft;  ///< how many; left out: all
    std::optional<RaisedException> exception;   ///< every activation raises it at once

    /// The allowlist in force; nothing while everything is shown.
    [[nodiscard]] std::optional<SimulatedAllowlist> inForce() const;
    /// Assertions that are active and not invalidated.
    [[nodiscard]] std::size_t activeAssertions() const;
    [[nodiscard]] std::uint64_t activations() const noexcept { return activations_; }
    [[nodiscard]] std::uint64_t invalidations() const noexcept { return invalidations_; }
    /// Activations that wait for their answer.
    [[nodiscard]] std::uint64_t unanswered() const noexcept { return unanswered_; }
    /// Every gap so far. One of no length counts: for a moment everything was shown.
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
