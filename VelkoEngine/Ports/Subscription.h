#pragma once

#include <functional>
#include <utility>

namespace velko {

/// A registration with the system that ends when it is destroyed or replaced. Move-only; main thread only.
class Subscription {
 public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        const Subscription old(std::exchange(end_, std::exchange(other.end_, nullptr)));
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { end(); }

    /// Ends the registration: its callback is never called again. Safe within that callback.
    void end() {
        if (const auto end = std::exchange(end_, nullptr)) {
            end();
        }
    }

    [[nodiscard]] bool isActive() const noexcept { return static_cast<bool>(end_); }

 private:
    std::function<void()> end_;
};

}  // namespace velko
