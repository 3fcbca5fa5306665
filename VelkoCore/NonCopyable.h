#pragma once

namespace velko {

/// The base of a class whose objects have an identity: they are neither copied nor moved.
class NonCopyable {
 public:
    NonCopyable(const NonCopyable&) = delete;
    NonCopyable& operator=(const NonCopyable&) = delete;

 protected:
    NonCopyable() = default;
    ~NonCopyable() = default;
};

}  // namespace velko
