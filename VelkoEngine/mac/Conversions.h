#pragma once

#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VelkoCore/Geometry.h"
#include "VelkoEngine/Ports/PrivateFramework.h"

namespace velko {

/// Owns one reference to a Core Foundation object and releases it exactly once.
template <class Ref>
class CFRef final {
 public:
    CFRef() = default;
    CFRef(CFRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CFRef& operator=(CFRef&& other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    CFRef(const CFRef&) = delete;
    CFRef& operator=(const CFRef&) = delete;
    ~CFRef() {
        if (ref_ != nullptr) {
            CFRelease(ref_);
        }
    }

    /// Takes over the reference that a function named Create or Copy returns; it may be null.
    [[nodiscard]] static CFRef adopt(Ref ref) noexcept { return CFRef(ref); }

    /// Adds a reference to an object that somebody else owns.
    [[nodiscard]] static CFRef retain(Ref ref) noexcept { return CFRef(static_cast<Ref>(CFRetain(ref))); }

    /// Where a Copy function may put the reference that it hands out. Only while this holds none.
    [[nodiscard]] Ref* out() noexcept { return &ref_; }

    [[nodiscard]] Ref get() const noexcept { return ref_; }
    explicit operator bool() const noexcept { return ref_ != nullptr; }

 private:
    explicit CFRef(Ref ref) noexcept : ref_(ref) {}

    Ref ref_ = nullptr;
};

}  // namespace velko

/// Values on their way across the language boundary: `portable` copies them to ours, `native` to the
/// system's. Any thread.
namespace velko {

/// Empty for nil. What has no UTF-8 form becomes "?".
[[nodiscard]] std::string portable(NSString* text);
[[nodiscard]] std::optional<std::string> portableIfAny(NSString* text);
/// Never nil: bytes that are not UTF-8 are replaced.
[[nodiscard]] NSString* native(std::string_view text);

[[nodiscard]] NSArray<NSString*>* native(const std::vector<std::string>& texts);
[[nodiscard]] NSArray<NSNumber*>* native(const std::vector<int>& numbers);

[[nodiscard]] Point portable(CGPoint point);
[[nodiscard]] Size portable(CGSize size);
[[nodiscard]] Rect portable(CGRect rect);
[[nodiscard]] CGRect native(const Rect& rect);

[[nodiscard]] FrameworkError portable(NSError* error);
[[nodiscard]] RaisedException portable(NSException* exception);

/// Nothing when the object is missing, no number, or no whole number of 64 bits.
[[nodiscard]] std::optional<std::int64_t> wholeNumber(CFTypeRef object);

}  // namespace velko
