#include "Fuzz.h"
#include "VelkoCore/Layout/LayoutFormats.h"

/// An export that can be read is written and read again without loss, and merging it twice is merging it
/// once.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velko;
    const auto imported = LayoutExport::read(fuzz::textOf(data, size));
    if (!imported) {
        fuzz::require(!describe(imported.error()).empty());
        return 0;
    }
    fuzz::require(imported->velkoLayout <= LayoutExport::currentFormat);
    const auto again = LayoutExport::read(imported->data());
    fuzz::require(again && *again == *imported);
    Layout layout;
    layout.apply(*imported);
    const Layout once = layout;
    layout.apply(*imported);
    fuzz::require(layout == once && layout.hasCompletedSetup && layout.sections == imported->sections);
    return 0;
}
