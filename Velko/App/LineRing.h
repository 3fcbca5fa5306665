#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ranges>
#include <string_view>
#include <vector>

namespace velko {

/// The newest lines of a text that only grows, in memory that is taken at once and never grows. An old line
/// gives way when there are too many, or when a new one needs its bytes.
class LineRing final {
 public:
    struct Limits {
        std::size_t lines;  ///< at least 1
        std::size_t bytes;  ///< at least 1, and less than 4 GiB
    };

    explicit LineRing(Limits limits);

    /// Adds the newest line. What is longer than the whole ring is cut there, between two characters.
    void push(std::string_view line);

    /// The newest lines as string views, so many of them or as many as there are, the oldest of them first: a
    /// range with random access. The views hold until the next `push`.
    [[nodiscard]] auto newest(std::uint64_t count) const {
        const auto end = static_cast<int>(count_);
        return std::views::iota(end - static_cast<int>(std::min<std::uint64_t>(count, count_)), end) |
               std::views::transform([this](int index) { return textOf(static_cast<std::size_t>(index)); });
    }

    /// All lines, in the same way.
    [[nodiscard]] auto lines() const { return newest(count_); }

    /// How many lines have been added so far, also those that are gone.
    [[nodiscard]] std::uint64_t pushed() const noexcept { return pushed_; }

 private:
    struct Place {
        std::uint32_t begin = 0;
        std::uint32_t length = 0;
        [[nodiscard]] std::size_t end() const { return std::size_t{begin} + length; }
    };

    [[nodiscard]] const Place& placeOf(std::size_t index) const {
        return places_[(first_ + index) % places_.size()];
    }
    [[nodiscard]] std::string_view textOf(std::size_t index) const {
        return {bytes_.data() + placeOf(index).begin, placeOf(index).length};
    }
    [[nodiscard]] std::size_t makeRoom(std::size_t length);
    void dropOldest();

    std::vector<char> bytes_;
    std::vector<Place> places_;
    std::size_t first_ = 0;  ///< where the oldest line's place is
    std::size_t count_ = 0;
    std::uint64_t pushed_ = 0;
};

}  // namespace velko
