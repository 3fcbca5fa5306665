#include "VelkoCore/Layout/LayoutFormats.h"

#include <utility>

#include "VelkoCore/Files/JsonRecord.h"
#include "VelkoCore/Layout/Section.h"

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

template <>
struct JsonRecord<AutopilotState> {
    static constexpr std::tuple fields{
        JsonField{"enabled", &AutopilotState::enabled},
        JsonField{"watchingSince", &AutopilotState::watchingSince},
        JsonField{"lastOffered", &AutopilotState::lastOffered},
        JsonField{"offerPending", &AutopilotState::offerPending},
        JsonField{"snoozedUntil", &AutopilotState::snoozedUntil},
    };
    static constexpr MissingKeys missingKeys = MissingKeys::keepValue;
};

template <>
struct JsonRecord<Layout> {
    static constexpr JsonField hasCompletedSetup{"hasCompletedSetup", &Layout::hasCompletedSetup};

    static constexpr std::tuple fields{
        JsonField{"version", &Layout::version},
        JsonField{"sections", &Layout::sections},
        JsonField{"newIconDefault", &Layout::newIconDefault},
        JsonField{"reveal", &Layout::reveal},
        JsonField{"lastClicked", &Layout::lastClicked},
        hasCompletedSetup,
        JsonField{"askAboutNewIcons", &Layout::askAboutNewIcons},
        JsonField{"seenApps", &Layout::seenApps},
        JsonField{"inbox", &Layout::inbox},
        JsonField{"firstSeen", &Layout::firstSeen},
        JsonField{"knownGraceUntil", &Layout::knownGraceUntil},
        JsonField{"clickDays", &Layout::clickDays},
        JsonField{"alwaysKeep", &Layout::alwaysKeep},
        JsonField{"autopilot", &Layout::autopilot},
        JsonField{"popOutOnChange", &Layout::popOutOnChange},
        JsonField{"showLiveActivities", &Layout::showLiveActivities},
    };
    static constexpr MissingKeys missingKeys = MissingKeys::keepValue;

    /// An app waits once, whatever somebody has written into the file.
    static void normalise(Layout& layout) {
        BundleIDs met;
        std::erase_if(layout.inbox, [&](const BundleID& bundleID) { return !met.insert(bundleID).second; });
    }
};

namespace {

bool lacks(const Json& json, std::string_view key) {
    const auto& object = std::get<Json::Object>(json.value);
    const auto found = object.find(key);
    return found == object.end() || found->second.isNull();
}

}  // namespace

std::expected<Layout, DecodingError> decodeLayout(std::string_view text) {
    const auto json = Json::parse(text);
    if (!json) {
        return std::unexpected(json.error());
    }
    Layout older;
    older.seenApps.reset();
    auto layout = decodeRecord(*json, std::move(older));
    if (layout && lacks(*json, JsonRecord<Layout>::hasCompletedSetup.key)) {
        // Files from before this key existed: whoever had sorted an app was past the setup.
        layout->hasCompletedSetup = !layout->sections.empty();
    }
    return layout;
}

std::string encodeLayout(const Layout& layout) {
    return encodeRecord(layout);
}

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

}  // namespace velko
