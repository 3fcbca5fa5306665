#include "Velko/App/LineRing.h"

#include <algorithm>

namespace velko {

namespace {

/// The beginning of a text in UTF-8 that fits, without half a character at its end.
std::string_view fitting(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes) {
        return text;
    }
    constexpr unsigned kindOfByte = 0b1100'0000;
    constexpr unsigned continuation = 0b1000'0000;
    while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & kindOfByte) == continuation) {
        --bytes;
    }
    return text.substr(0, bytes);
}

}  // namespace

LineRing::LineRing(Limits limits) : bytes_(limits.bytes), places_(limits.lines) {}

void LineRing::push(std::string_view line) {
    const std::string_view kept = fitting(line, bytes_.size());
    if (count_ == places_.size()) {
        dropOldest();
    }
    const std::size_t begin = makeRoom(kept.size());
    std::ranges::copy(kept, bytes_.begin() + static_cast<std::ptrdiff_t>(begin));
    places_[(first_ + count_) % places_.size()] = {.begin = static_cast<std::uint32_t>(begin),
                                                   .length = static_cast<std::uint32_t>(kept.size())};
    ++count_;
    ++pushed_;
}

/// Where the next line begins: behind the newest one, or at the front if it does not fit there, so that each
/// line is in one piece. The oldest lines follow the newest one in the ring, so they are what is in the way.
std::size_t LineRing::makeRoom(std::size_t length) {
    std::size_t begin = count_ == 0 ? 0 : placeOf(count_ - 1).end();
    if (begin + length > bytes_.size()) {
        while (count_ > 0 && placeOf(0).begin >= begin) {
            dropOldest();
        }
        begin = 0;
    }
    while (count_ > 0 && placeOf(0).begin >= begin && placeOf(0).begin < begin + length) {
        dropOldest();
    }
    return begin;
}

void LineRing::dropOldest() {
    first_ = (first_ + 1) % places_.size();
    --count_;
}

}  // namespace velko
