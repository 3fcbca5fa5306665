#include "VelkoCore/Layout/LayoutExport.h"

#include <utility>

#include "VelkoCore/Files/JsonRecord.h"
#include "VelkoCore/Layout/RevealSettingsJson.h"

namespace velko {

namespace {

/// The one key by which an export is recognised, read before the rest.
struct Marker {
    std::optional<std::int64_t> velkoLayout;
};

}  // namespace

template <>
struct JsonRecord<Marker> {
    static constexpr std::tuple fields{JsonField{"velkoLayout", &Marker::velkoLayout}};
    static constexpr MissingKeys missingKeys = MissingKeys::fail;
};

template <>
struct JsonRecord<LayoutExport> {
    static constexpr std::tuple fields{
        JsonField{"velkoLayout", &LayoutExport::velkoLayout},
        JsonField{"sections", &LayoutExport::sections},
        JsonField{"alwaysKeep", &LayoutExport::alwaysKeep},
        JsonField{"reveal", &LayoutExport::reveal},
        JsonField{"newIconDefault", &LayoutExport::newIconDefault},
        JsonField{"askAboutNewIcons", &LayoutExport::askAboutNewIcons},
        JsonField{"popOutOnChange", &LayoutExport::popOutOnChange},
        JsonField{"showLiveActivities", &LayoutExport::showLiveActivities},
    };
    static constexpr MissingKeys missingKeys = MissingKeys::fail;
};

namespace {

struct ImportErrorText {
    std::string operator()(ImportError error) const {
        switch (error) {
            case ImportError::notVelko: return "This file isn't a Velko layout.";
            case ImportError::newerFormat:
                return "This layout comes from a newer Velko. Update Velko, then try again.";
        }
        return {};
    }
    std::string operator()(const DecodingError& error) const {
        return "The file is damaged or incomplete (" + error.description + ").";
    }
};

}  // namespace

std::string describe(const LayoutReadError& error) {
    return std::visit(ImportErrorText{}, error);
}

LayoutExport LayoutExport::of(const Layout& layout) {
    return {.sections = layout.sections,
            .alwaysKeep = layout.alwaysKeep,
            .reveal = layout.reveal,
            .newIconDefault = layout.newIconDefault,
            .askAboutNewIcons = layout.askAboutNewIcons,
            .popOutOnChange = layout.popOutOnChange,
            .showLiveActivities = layout.showLiveActivities};
}

std::string LayoutExport::data() const {
    return encodeRecord(*this);
}

std::expected<LayoutExport, LayoutReadError> LayoutExport::read(std::string_view data) {
    const auto json = Json::parse(data);
    if (!json) {
        return std::unexpected(ImportError::notVelko);
    }
    const auto marker = decodeRecord<Marker>(*json);
    const auto format = marker ? marker->velkoLayout : std::nullopt;
    if (!format) {
        return std::unexpected(ImportError::notVelko);
    }
    if (*format > currentFormat) {
        return std::unexpected(ImportError::newerFormat);
    }
    auto layout = decodeRecord<LayoutExport>(*json);
    if (!layout) {
        return std::unexpected(std::move(layout.error()));
    }
    return *std::move(layout);
}

void Layout::apply(const LayoutExport& other) {
    if (!seenApps) {
        seenApps.emplace();
    }
    for (const auto& [bundleID, section] : other.sections) {
        place(bundleID, section);
        seenApps->insert(bundleID);
    }
    alwaysKeep.insert(other.alwaysKeep.begin(), other.alwaysKeep.end());
    reveal = other.reveal;
    newIconDefault = other.newIconDefault;
    askAboutNewIcons = other.askAboutNewIcons;
    popOutOnChange = other.popOutOnChange;
    showLiveActivities = other.showLiveActivities.value_or(showLiveActivities);
    hasCompletedSetup = true;
}

}  // namespace velko
