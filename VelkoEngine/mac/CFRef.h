#pragma once

#import <CoreFoundation/CoreFoundation.h>
#include <utility>

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
