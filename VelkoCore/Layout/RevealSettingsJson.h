#pragma once

#include "VelkoCore/Files/JsonRecord.h"
#include "VelkoCore/Layout/RevealSettings.h"

namespace velko {

/// Shared by the layout file and the export file, so that neither lets an odd auto-tuck time in.
template <>
struct JsonRecord<RevealSettings> {
    static constexpr std::tuple fields{
        JsonField{"autoTuckSeconds", &RevealSettings::autoTuckSeconds},
        JsonField{"notchedStyle", &RevealSettings::notchedStyle},
        JsonField{"otherStyle", &RevealSettings::otherStyle},
        JsonField{"hover", &RevealSettings::hover},
    };
    static constexpr MissingKeys missingKeys = MissingKeys::keepValue;

    static void normalise(RevealSettings& settings) noexcept {
        settings.autoTuckSeconds = RevealSettings::normalisedAutoTuck(settings.autoTuckSeconds);
    }
};

}  // namespace velko
