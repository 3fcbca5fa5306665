#include "Velko/Setup/SectionCounts.h"

namespace velko {

void SectionCounts::add(Section section) noexcept {
    switch (section) {
        case Section::bar: ++bar; break;
        case Section::tucked: ++tucked; break;
        case Section::buried: ++buried; break;
    }
}

std::string describe(const SectionCounts& counts) {
    return std::to_string(counts.bar) + " in the bar, " + std::to_string(counts.tucked) + " tucked, " +
           std::to_string(counts.buried) + " buried";
}

std::string appsInWords(std::size_t count) {
    return count == 1 ? "1 app" : std::to_string(count) + " apps";
}

}  // namespace velko
