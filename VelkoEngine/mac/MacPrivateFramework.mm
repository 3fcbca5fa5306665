#import "VelkoEngine/mac/MacPrivateFramework.h"

#import <Foundation/Foundation.h>
#include <dlfcn.h>
#include <mach-o/dyld.h>
#import <objc/runtime.h>

#include <cstdlib>
#include <span>
#include <type_traits>

#include "VelkoEngine/mac/Conversions.h"

/// What an assessment configuration is asked for.
@protocol VLKConfiguration <NSObject>
- (instancetype)initWithAllowedSystemItems:(NSArray<NSNumber*>*)systemItems
                  allowedBundleIdentifiers:(NSArray<NSString*>*)bundleIdentifiers;
@end

/// What an assessment assertion is asked for.
@protocol VLKAssertion <NSObject>
- (void)activateWithConfiguration:(id)configuration completionHandler:(void (^)(NSError*))handler;
- (void)invalidate;
@end

namespace velko {

namespace {

class FrameworkObject final : public PrivateFramework::Object {
 public:
    explicit FrameworkObject(id object) : object_(object) {}

    [[nodiscard]] static id in(const PrivateFramework::ObjectRef& ref) {
        return ref ? static_cast<const FrameworkObject&>(*ref).object_ : nil;
    }

    [[nodiscard]] static PrivateFramework::ObjectRef holding(id object) {
        return object == nil ? nullptr : std::make_shared<FrameworkObject>(object);
    }

 private:
    id object_;
};

/// Makes the call; what it raises comes back as a value.
template <class Call>
auto guarded(Call call) -> std::expected<std::invoke_result_t<Call>, RaisedException> {
    @try {
        if constexpr (std::is_void_v<std::invoke_result_t<Call>>) {
            call();
            return {};
        } else {
            return call();
        }
    } @catch (NSException* exception) {
        return std::unexpected(portable(exception));
    }
}

struct Freed {
    void operator()(void* memory) const noexcept { std::free(memory); }
};

void addMethods(Class owner, bool isClassMethod, std::vector<RuntimeMethod>& methods) {
    unsigned int count = 0;
    const std::unique_ptr<Method[], Freed> list(class_copyMethodList(owner, &count));
    for (const Method method : std::span(list.get(), count)) {
        const char* const encoding = method_getTypeEncoding(method);
        methods.push_back({.isClassMethod = isClassMethod,
                           .selector = sel_getName(method_getName(method)),
                           .typeEncoding = encoding == nullptr ? "" : encoding});
    }
}

std::map<std::string, std::vector<RuntimeMethod>> methodsOf(const std::string& imagePath) {
    std::map<std::string, std::vector<RuntimeMethod>> result;
    unsigned int count = 0;
    const std::unique_ptr<const char*[], Freed> names(objc_copyClassNamesForImage(imagePath.c_str(), &count));
    for (const char* const name : std::span(names.get(), count)) {
        if (Class found = objc_lookUpClass(name)) {
            std::vector<RuntimeMethod>& methods = result[name];
            addMethods(object_getClass(found), true, methods);
            addMethods(found, false, methods);
        }
    }
    return result;
}

}  // namespace

std::expected<void, std::string> MacPrivateFramework::open(const std::string& path) {
    // Never closed: a library that defines classes stays for the life of the process.
    if (dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL) != nullptr) {
        return {};
    }
    const char* const words = dlerror();
    return std::unexpected(std::string(words == nullptr ? "" : words));
}

bool MacPrivateFramework::hasClass(const std::string& className) const {
    return objc_lookUpClass(className.c_str()) != nil;
}

bool MacPrivateFramework::instancesRespond(const std::string& className, const std::string& selector) const {
    Class found = objc_lookUpClass(className.c_str());
    return found != nil && class_respondsToSelector(found, sel_registerName(selector.c_str()));
}

std::optional<std::string> MacPrivateFramework::imagePath(const std::string& className) const {
    Class found = objc_lookUpClass(className.c_str());
    const char* const path = found == nil ? nullptr : class_getImageName(found);
    return path == nullptr ? std::nullopt : std::optional<std::string>(path);
}

std::vector<std::string> MacPrivateFramework::loadedLibraries() const {
    std::vector<std::string> paths;
    for (std::uint32_t image = 0; image < _dyld_image_count(); ++image) {
        // Null if the library was unloaded since the count.
        if (const char* const path = _dyld_get_image_name(image)) {
            paths.emplace_back(path);
        }
    }
    return paths;
}

std::expected<std::map<std::string, std::vector<RuntimeMethod>>, RaisedException>
MacPrivateFramework::methods(const std::string& imagePath) const {
    return guarded([&] { return methodsOf(imagePath); });
}

std::expected<PrivateFramework::ObjectRef, RaisedException> MacPrivateFramework::makeConfiguration(
    const std::string& className, const std::vector<int>& allowedSystemItems,
    const std::vector<BundleID>& allowedBundleIDs) {
    return guarded([&] {
        Class found = objc_lookUpClass(className.c_str());
        const id<VLKConfiguration> fresh = [found alloc];
        return FrameworkObject::holding([fresh initWithAllowedSystemItems:native(allowedSystemItems)
                                                 allowedBundleIdentifiers:native(allowedBundleIDs)]);
    });
}

std::expected<PrivateFramework::ObjectRef, RaisedException> MacPrivateFramework::makeAssertion(
    const std::string& className) {
    return guarded([&] {
        Class found = objc_lookUpClass(className.c_str());
        return FrameworkObject::holding([[found alloc] init]);
    });
}

std::expected<void, RaisedException> MacPrivateFramework::activate(const ObjectRef& assertion,
                                                                   const ObjectRef& configuration,
                                                                   Activated completion) {
    // Made outside the lambda: a block inside it would share the lambda's references, and this block lives
    // longer.
    void (^handler)(NSError*) = ^(NSError* error) {
      completion(error == nil ? std::nullopt : std::optional(portable(error)));
    };
    return guarded([&] {
        const id<VLKAssertion> target = FrameworkObject::in(assertion);
        [target activateWithConfiguration:FrameworkObject::in(configuration) completionHandler:handler];
    });
}

std::expected<void, RaisedException> MacPrivateFramework::invalidate(const ObjectRef& assertion) {
    return guarded([&] {
        const id<VLKAssertion> target = FrameworkObject::in(assertion);
        if ([target respondsToSelector:@selector(invalidate)]) {
            [target invalidate];
        }
    });
}

void MacPrivateFramework::systemLog(const std::string& line) {
    NSLog(@"%@", native(line));
}

}  // namespace velko
