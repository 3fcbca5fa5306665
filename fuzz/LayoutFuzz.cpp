#include "Fuzz.h"
#include "VelkoCore/Layout/LayoutFormats.h"

/// A layout that can be read at all is written and read again without loss.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velko;
    const auto layout = decodeLayout(fuzz::textOf(data, size));
    if (!layout) {
        fuzz::require(!layout.error().description.empty());
        return 0;
    }
    fuzz::require(RevealSettings::normalisedAutoTuck(layout->reveal.autoTuckSeconds) ==
                  layout->reveal.autoTuckSeconds);
    const auto again = decodeLayout(encodeLayout(*layout));
    fuzz::require(again && *again == *layout);
    return 0;
}
