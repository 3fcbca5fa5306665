#include "VelkoCore/Layout/LayoutCoding.h"

#include "VelkoCore/Files/JsonRecord.h"
#include "VelkoCore/Layout/RevealSettingsJson.h"

namespace velko {

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

}  // namespace velko
