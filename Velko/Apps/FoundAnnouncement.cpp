#include "Velko/Apps/FoundAnnouncement.h"

#include <chrono>
#include <utility>

#include "Velko/Ports/Surfaces.h"
#include "VelkoEngine/Ports/MainThread.h"

namespace velko {

namespace {

constexpr auto typingPause = std::chrono::milliseconds(500);

std::string countInWords(std::size_t count) {
    if (count == 0) {
        return "No results";
    }
    return count == 1 ? "1 result" : std::to_string(count) + " results";
}

}  // namespace

void FoundAnnouncement::found(std::size_t count, const std::string& first) {
    std::string words = countInWords(count);
    if (!first.empty()) {
        words.append(". ").append(first);
    }
    pause_ = mainThread_.after(typingPause, [this, words = std::move(words)] { surfaces_.announce(words); });
}

void FoundAnnouncement::typed(const std::string& text, std::size_t count) {
    if (text.empty()) {
        cancel();
    } else {
        found(count);
    }
}

}  // namespace velko
