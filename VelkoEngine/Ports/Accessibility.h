#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoCore/Time/Date.h"

namespace velko {

/// The Accessibility interface's error numbers; the rest of its range is passed on as it comes.
enum class AXError : std::int32_t {
    failure = -25200,
    illegalArgument = -25201,
    invalidElement = -25202,
    cannotComplete = -25204,  ///< also what a slow or hung app gives once the time-out is over
    attributeUnsupported = -25205,
    actionUnsupported = -25206,
    notImplemented = -25208,
    notificationAlreadyRegistered = -25209,
    apiDisabled = -25211,  ///< the process is not trusted
    noValue = -25212,
};

/// One element of an app's Accessibility tree. A cheap handle: copies stand for the same element. Any
/// thread may use it.
class AXElement {
 public:
    /// A port's own record of an element.
    class Native : private NonCopyable {
     public:
        virtual ~Native() = default;
    };

    explicit AXElement(std::shared_ptr<const Native> native) noexcept : native_(std::move(native)) {}

    [[nodiscard]] const Native& native() const noexcept { return *native_; }

 private:
    std::shared_ptr<const Native> native_;
};

/// The value of an attribute: what Velko reads, or `Other` for a type that it has no use for.
struct AXOther {};
using AXValue =
    std::variant<AXOther, bool, double, std::string, Point, Size, AXElement, std::vector<AXElement>>;

/// What an element says when it is asked for an attribute.
using AXAnswer = std::expected<AXValue, AXError>;

/// Listens to the notifications of one process until it is destroyed. Main thread.
class AXObserver : private NonCopyable {
 public:
    /// May be destroyed within the handler, which is never called afterwards.
    virtual ~AXObserver() = default;

    /// Asks for a notification about an element of the process. An application's element stands for all
    /// elements below it. May block for the element's time-out.
    [[nodiscard]] virtual std::expected<void, AXError> add(const AXElement& element,
                                                           const std::string& notification) = 0;
};

/// Other apps' user interfaces, as assistive technology sees them.
///
/// Reads may block, each for at most the time-out of the element asked; they may be made on any thread.
/// The permission calls, actions and observers belong to the main thread.
class Accessibility : private NonCopyable {
 public:
    virtual ~Accessibility() = default;

    /// Whether the user lets this process use Accessibility. Never prompts.
    [[nodiscard]] virtual bool isTrusted() const = 0;

    /// Makes the system ask the user for that permission.
    virtual void promptForTrust() = 0;

    /// The element of a process, alive or not. The messaging time-out holds for it and for
    /// every element that is reached from it: a binding sets it on each element that it hands out.
    [[nodiscard]] virtual AXElement application(ProcessID pid, Uptime messagingTimeout) const = 0;

    [[nodiscard]] virtual std::expected<AXValue, AXError> attribute(const AXElement& element,
                                                                    const std::string& name) const = 0;

    /// Several attributes with one message: an answer for each name, in their order. An error when the
    /// element does not answer at all.
    [[nodiscard]] virtual std::expected<std::vector<AXAnswer>, AXError> attributes(
        const AXElement& element, const std::vector<std::string>& names) const = 0;

    [[nodiscard]] virtual std::expected<std::vector<std::string>, AXError> attributeNames(
        const AXElement& element) const = 0;

    /// The process that owns an element.
    [[nodiscard]] virtual std::expected<ProcessID, AXError> pid(const AXElement& element) const = 0;

    /// The element under a point, of any app. It may belong to the process that draws this part of the screen
    /// for the app. Origin at the top left of the primary screen. The call takes at most the time-out of the
    /// whole process; the one given holds for the element that is found.
    [[nodiscard]] virtual std::expected<AXElement, AXError> elementAt(Point point,
                                                                      Uptime messagingTimeout) const = 0;

    /// Makes an element perform an action. May block for the element's time-out even though the action is
    /// performed.
    [[nodiscard]] virtual std::expected<void, AXError> perform(const AXElement& element,
                                                               const std::string& action) = 0;

    /// Receives the notification's name and the element that it is about.
    using NotificationHandler = std::function<void(const std::string&, const AXElement&)>;

    /// Listens to a process, alive or not; null when the system refuses. The handler is called on the main
    /// thread; the elements that it receives have the time-out.
    [[nodiscard]] virtual std::unique_ptr<AXObserver> observe(ProcessID pid, Uptime messagingTimeout,
                                                              NotificationHandler handler) = 0;
};

}  // namespace velko
