#include <algorithm>
#include <string>

#include "VelkoEngine/Contracts/Contracts.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko::Contracts {

namespace {

constexpr auto nobodysClass = "VelkoNobodyHasThisClass";

/// What a framework that could be loaded says of one of its classes.
void checkPresent(const PrivateFramework& framework, const std::string& className, Checks& checks) {
    const auto image = framework.imagePath(className);
    expect(checks, "framework: a class that is there has a library", image && !image->empty(),
           image.value_or("none"));
    const auto classes = framework.methods(image.value_or(""));
    const bool isListed = classes && classes->contains(className);
    expect(checks, "framework: that library lists the class", isListed);
    if (isListed) {
        expect(checks, "framework: instances respond to the methods that are listed",
               std::ranges::all_of(classes->at(className), [&](const RuntimeMethod& method) {
                   return method.isClassMethod || framework.instancesRespond(className, method.selector);
               }));
    }
    expect(checks, "framework: instances do not respond to what nobody has",
           !framework.instancesRespond(className, "velkoNobodyHasThisSelector"));
}

}  // namespace

void checkPrivateFramework(PrivateFramework& framework, const std::string& libraryPath,
                           const std::string& className, Checks& checks) {
    expect(checks, "framework: a library that does not exist cannot be loaded",
           !framework.open("/System/Library/PrivateFrameworks/VelkoNobodyHasThis.framework/Nobody"));
    const auto opened = framework.open(libraryPath);
    expect(checks, "framework: loading again gives the same answer",
           framework.open(libraryPath).has_value() == opened.has_value(),
           opened ? "loaded" : "not loaded: " + opened.error());

    const auto configuration = framework.makeConfiguration(nobodysClass, {0}, {"app.velko.mac"});
    const auto assertion = framework.makeAssertion(nobodysClass);
    expect(checks, "framework: a class that is missing is an ordinary answer",
           !framework.hasClass(nobodysClass) && !framework.instancesRespond(nobodysClass, "init") &&
               !framework.imagePath(nobodysClass) && configuration && !*configuration && assertion &&
               !*assertion);
    const auto nothing = framework.methods("/velko/nobody/has/this");
    expect(checks, "framework: an unknown library lists no classes", nothing && nothing->empty());
    expect(checks, "framework: invalidating nothing is harmless", framework.invalidate(nullptr).has_value());
    if (framework.hasClass(className)) {
        checkPresent(framework, className, checks);
    }
}

}  // namespace velko::Contracts
