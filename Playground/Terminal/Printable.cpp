#include "Playground/Terminal/Printable.h"

#include <cstddef>

#include "VelkoEngine/Text/Utf8.h"

namespace velko::playground {

namespace {

constexpr std::string_view replacement = "\uFFFD";

/// How many bytes of well-formed UTF-8 are a control character at its start: none, one, or two for the second
/// set, whose characters some terminals obey too.
std::size_t lengthOfControl(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x20U || first == 0x7FU) {
        return 1;
    }
    const bool isSecondSet = first == 0xC2U && static_cast<unsigned char>(text[1]) < 0xA0U;
    return isSecondSet ? 2 : 0;
}

}  // namespace

std::string printable(std::string_view line) {
    const std::string whole = repairedUtf8(line);
    std::string result;
    for (std::string_view rest = whole; !rest.empty();) {
        const std::size_t control = lengthOfControl(rest);
        result += control > 0 ? replacement : rest.substr(0, 1);
        rest.remove_prefix(control > 0 ? control : 1);
    }
    return result;
}

}  // namespace velko::playground
