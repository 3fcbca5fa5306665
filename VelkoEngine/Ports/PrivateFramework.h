#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// An error object as frameworks report it.
struct FrameworkError {
    std::string domain;
    std::int64_t code = 0;
    std::string description;

    bool operator==(const FrameworkError&) const = default;
};

/// An exception that a framework raised, caught and turned into a value.
struct RaisedException {
    std::string name;
    std::string reason;

    bool operator==(const RaisedException&) const = default;
};

/// A method as the object runtime lists it.
struct RuntimeMethod {
    bool isClassMethod = false;
    std::string selector;
    std::string typeEncoding;

    bool operator==(const RuntimeMethod&) const = default;
};

/// Calls into a framework that may be absent: everything is looked up by name and absence is an ordinary
/// answer. Which names, in which order, and what an answer means is decided by the caller.
///
/// Main thread, but for the completion of `activate`.
class PrivateFramework : private NonCopyable {
 public:
    /// An object of the framework's; let go when the last copy is.
    class Object : private NonCopyable {
     public:
        virtual ~Object() = default;
    };
    using ObjectRef = std::shared_ptr<Object>;

    virtual ~PrivateFramework() = default;

    /// Loads the library with immediate binding and local symbols; the loader's words on failure, which
    /// may be empty. Loading it again is cheap.
    [[nodiscard]] virtual std::expected<void, std::string> open(const std::string& path) = 0;

    [[nodiscard]] virtual bool hasClass(const std::string& className) const = 0;

    /// Whether instances of a class answer a selector; false when there is no such class.
    [[nodiscard]] virtual bool instancesRespond(const std::string& className,
                                                const std::string& selector) const = 0;

    /// The library that defines a class; nothing when there is no such class or it has no library.
    [[nodiscard]] virtual std::optional<std::string> imagePath(const std::string& className) const = 0;

    /// The libraries in this process, by the paths under which the loader knows them: those of frameworks
    /// contain a version, which `open` does not need.
    [[nodiscard]] virtual std::vector<std::string> loadedLibraries() const = 0;

    /// Every class that a library defines, with its own class and instance methods, in no set order; none
    /// for a path under which the loader does not know it.
    [[nodiscard]] virtual std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException>
    methods(const std::string& imagePath) const = 0;

    /// A configuration of class `className` that allows the numbered system items and the apps. Null when
    /// the framework makes none.
    [[nodiscard]] virtual std::expected<ObjectRef, RaisedException> makeConfiguration(
        const std::string& className, const std::vector<int>& allowedSystemItems,
        const std::vector<BundleID>& allowedBundleIDs) = 0;

    /// An assertion of class `className`, not yet active. Null when the framework makes none.
    [[nodiscard]] virtual std::expected<ObjectRef, RaisedException> makeAssertion(
        const std::string& className) = 0;

    /// Called by the framework with an error or without one, on any thread and any number of times.
    using Activated = std::function<void(std::optional<FrameworkError>)>;

    /// Asks the framework to put a configuration in force for as long as the assertion is valid.
    [[nodiscard]] virtual std::expected<void, RaisedException> activate(const ObjectRef& assertion,
                                                                        const ObjectRef& configuration,
                                                                        Activated completion) = 0;

    /// Ends an assertion; an object that cannot be invalidated is left alone.
    [[nodiscard]] virtual std::expected<void, RaisedException> invalidate(const ObjectRef& assertion) = 0;

    /// Writes a line to the system's log.
    virtual void systemLog(const std::string& line) = 0;
};

}  // namespace velko
