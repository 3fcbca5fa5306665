#include "VelkoEngine/Text/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace velko {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// A kind of sequence: its first bytes, its length, and the range of its second byte. The narrow ranges keep
/// out overlong forms, surrogates and numbers above the last code point.
struct Form {
    unsigned char firstLow;
    unsigned char firstHigh;
    std::size_t length;
    unsigned char secondLow = 0x80;
    unsigned char secondHigh = 0xBF;
};

constexpr std::array forms{
    Form{0x00, 0x7F, 1},
    Form{0xC2, 0xDF, 2},
    Form{0xE0, 0xE0, 3, 0xA0},
    Form{0xE1, 0xEC, 3},
    Form{0xED, 0xED, 3, 0x80, 0x9F},
    Form{0xEE, 0xEF, 3},
    Form{0xF0, 0xF0, 4, 0x90},
    Form{0xF1, 0xF3, 4},
    Form{0xF4, 0xF4, 4, 0x80, 0x8F},
};

/// The length of the well-formed sequence that `text` begins with; 0 when there is none.
std::size_t sequenceLength(std::string_view text) noexcept {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const auto* const form = std::ranges::find_if(forms, [&](const Form& candidate) {
        return byte(0) >= candidate.firstLow && byte(0) <= candidate.firstHigh;
    });
    if (form == forms.end() || text.size() < form->length) {
        return 0;
    }
    for (std::size_t index = 1; index < form->length; ++index) {
        const bool second = index == 1;
        if (byte(index) < (second ? form->secondLow : 0x80) ||
            byte(index) > (second ? form->secondHigh : 0xBF)) {
            return 0;
        }
    }
    return form->length;
}

}  // namespace

std::string repairedUtf8(std::string_view text) {
    std::string repaired;
    repaired.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        repaired += length > 0 ? text.substr(0, length) : replacement;
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return repaired;
}

namespace {

/// The length in bytes of a control character at the start of well-formed UTF-8; 0 if there is none.
/// Characters of the second set have two bytes, and some terminals obey them too.
std::size_t lengthOfControl(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x20U || first == 0x7FU) {
        return 1;
    }
    const bool isSecondSet = first == 0xC2U && static_cast<unsigned char>(text[1]) < 0xA0U;
    return isSecondSet ? 2 : 0;
}

/// Whether a byte begins a letter of Hebrew, Arabic or a script near them in Unicode.
bool isFromRight(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t offset) {
        return at + offset < text.size() ? static_cast<unsigned char>(text[at + offset]) : 0U;
    };
    const auto between = [](unsigned value, unsigned first, unsigned last) {
        return value >= first && value <= last;
    };
    const unsigned first = byte(0);
    return (first == 0xD6 && byte(1) >= 0x90) || between(first, 0xD7, 0xDF) ||  // U+0590 to U+07FF
           (first == 0xE0 && between(byte(1), 0xA0, 0xA3)) ||                   // U+0800 to U+08FF
           (first == 0xEF && byte(1) == 0xAC && byte(2) >= 0x9D) ||             // U+FB1D to U+FB3F
           (first == 0xEF && between(byte(1), 0xAD, 0xB7)) ||                   // U+FB40 to U+FDFF
           (first == 0xEF && byte(1) == 0xB9 && byte(2) >= 0xB0) ||             // U+FE70 to U+FE7F
           (first == 0xEF && between(byte(1), 0xBA, 0xBB)) ||                   // U+FE80 to U+FEFF
           (first == 0xF0 && byte(1) == 0x9E && between(byte(2), 0xA0, 0xBB));  // U+1E800 to U+1EEFF
}

}  // namespace

std::string printable(std::string_view text, std::string_view kept) {
    const std::string whole = repairedUtf8(text);
    std::string result;
    result.reserve(whole.size());
    for (std::string_view rest = whole; !rest.empty();) {
        const std::size_t control = kept.contains(rest.front()) ? 0 : lengthOfControl(rest);
        result += control > 0 ? replacement : rest.substr(0, 1);
        rest.remove_prefix(control > 0 ? control : 1);
    }
    return result;
}

std::string isolated(std::string_view name) {
    constexpr std::string_view begin = "\u2068";  // first strong isolate
    constexpr std::string_view end = "\u2069";    // pop directional isolate
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (isFromRight(name, at)) {
            return std::string(begin).append(name).append(end);
        }
    }
    return std::string(name);
}

}  // namespace velko
