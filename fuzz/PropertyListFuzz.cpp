#include <span>

#include "Fuzz.h"
#include "Simulator/Files/LibplistReader.h"
#include "VelkoCore/Import/Importers.h"
#include "VelkoCore/Layout/Section.h"

namespace {

void requireSound(const std::optional<velko::ImportedLayout>& layout) {
    using namespace velko;
    if (!layout) {
        return;
    }
    if (const auto seconds = layout->autoTuckSeconds) {
        fuzz::require(RevealSettings::normalisedAutoTuck(*seconds) == *seconds);
    }
    for (const auto& [bundleID, section] : layout->sections) {
        fuzz::require(!bundleID.empty() && !bundleID.starts_with("com.surteesstudios."));
    }
}

}  // namespace

/// For any bytes, reading ends within its bounds and the importers return sound layouts.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velko;
    static const LibplistReader reader;
    static const BundleIDs known{"com.b", "com.example.clock", "com.example.sync", "com.example.sync.menu"};
    const auto list = readPropertyList(std::as_bytes(std::span{data, size}), reader);
    if (!list) {
        return 0;
    }
    if (const auto* preferences = list->as<PropertyList::Dictionary>()) {
        requireSound(Importers::bartender(*preferences, known));
        requireSound(Importers::ice(*preferences));
        requireSound(Importers::vanilla(*preferences));
    }
    return 0;
}
