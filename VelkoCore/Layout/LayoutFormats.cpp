#include "VelkoCore/Layout/LayoutFormats.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <variant>

#include "VelkoCore/Files/JsonRecord.h"
#include "VelkoCore/Layout/Section.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko {

namespace {

/// The fields of all switches that are stored as members of that type in a record.
template <class Record, class Member>
constexpr auto switchFields() {
    using Stored = Member Record::*;
    constexpr auto memberOf = [](const SwitchRow& row) {
        const auto* const stored = std::get_if<Stored>(&row.stored);
        return stored != nullptr ? stored : std::get_if<Stored>(&row.exported);
    };
    constexpr auto count = static_cast<std::size_t>(
        std::ranges::count_if(Switches::all, [=](const SwitchRow& row) { return memberOf(row) != nullptr; }));
    std::array<JsonField<Record, Member>, count> fields{};
    std::size_t next = 0;
    for (const SwitchRow& row : Switches::all) {
        if (const Stored* const member = memberOf(row)) {
            fields.at(next++) = {row.key, *member, row.isAddition};
        }
    }
    return fields;
}

}  // namespace

/// Shared by the layout file and the export file, so that both correct the auto-tuck time.
template <>
struct JsonRecord<RevealSettings> {
    static constexpr auto fields = std::tuple_cat(
        std::tuple{
            JsonField{"autoTuckSeconds", &RevealSettings::autoTuckSeconds},
            JsonField{"notchedStyle", &RevealSettings::notchedStyle},
            JsonField{"otherStyle", &RevealSettings::otherStyle},
        },
        switchFields<RevealSettings, bool>());
    static constexpr MissingKeys missingKeys = MissingKeys::keepValue;

    static void normalise(RevealSettings& settings) noexcept {
        settings.autoTuckSeconds = RevealSettings::normalisedAutoTuck(settings.autoTuckSeconds);
    }
};

template <>
struct JsonRecord<AutopilotState> {
    static constexpr auto fields = std::tuple_cat(
        switchFields<AutopilotState, bool>(), std::tuple{
                                                  JsonField{"watchingSince", &AutopilotState::watchingSince},
                                                  JsonField{"lastOffered", &AutopilotState::lastOffered},
                                                  JsonField{"offerPending", &AutopilotState::offerPending},
                                                  JsonField{"snoozedUntil", &AutopilotState::snoozedUntil},
                                              });
    static constexpr MissingKeys missingKeys = MissingKeys::keepValue;
};

template <>
struct JsonRecord<Layout> {
    static constexpr JsonField hasCompletedSetup{"hasCompletedSetup", &Layout::hasCompletedSetup};

    static constexpr auto fields = std::tuple_cat(
        std::tuple{
            JsonField{"version", &Layout::version},
            JsonField{"sections", &Layout::sections},
            JsonField{"newIconDefault", &Layout::newIconDefault},
            JsonField{"reveal", &Layout::reveal},
            JsonField{"lastClicked", &Layout::lastClicked},
            hasCompletedSetup,
            JsonField{"setupPutOff", &Layout::setupPutOff},
            JsonField{"seenApps", &Layout::seenApps},
            JsonField{"inbox", &Layout::inbox},
            JsonField{"waitingGoneSince", &Layout::waitingGoneSince, true},
            JsonField{"firstSeen", &Layout::firstSeen},
            JsonField{"knownGraceUntil", &Layout::knownGraceUntil},
            JsonField{"clickDays", &Layout::clickDays},
            JsonField{"alwaysKeep", &Layout::alwaysKeep},
            JsonField{"autopilot", &Layout::autopilot},
            JsonField{"neverPopOut", &Layout::neverPopOut, true},
            JsonField{"quietUntil", &Layout::quietUntil, true},
            JsonField{"hotKeys", &Layout::hotKeys},
            JsonField{"showAllFromWidth", &Layout::showAllFromWidth, true},
            JsonField{"shareKeep", &Layout::shareKeep, true},
            JsonField{"presentingMinutes", &Layout::presentingMinutes, true},
        },
        switchFields<Layout, bool>());
    static constexpr MissingKeys missingKeys = MissingKeys::keepValue;

    /// An app waits only once, even if the file names it twice. No display is narrower than a point.
    static void normalise(Layout& layout) {
        BundleIDs met;
        std::erase_if(layout.inbox, [&](const BundleID& bundleID) { return !met.insert(bundleID).second; });
        std::erase_if(layout.waitingGoneSince, [&](const auto& entry) { return !met.contains(entry.first); });
        if (layout.showAllFromWidth && *layout.showAllFromWidth < 1) {
            layout.showAllFromWidth.reset();
        }
        layout.presentingMinutes = Layout::normalisedPresenting(layout.presentingMinutes);
    }
};

namespace {

bool lacks(const Json& json, std::string_view key) {
    const auto& object = std::get<Json::Object>(json.value);
    const auto found = object.find(key);
    return found == object.end() || found->second.isNull();
}

}  // namespace

std::expected<Layout, DecodingError> decodeLayout(std::string_view text,
                                                  std::vector<DecodingError>* ignored) {
    auto json = Json::parse(text);
    if (!json) {
        return std::unexpected(json.error());
    }
    Json::Object unread;
    if (auto* const object = std::get_if<Json::Object>(&json->value)) {
        for (JsonMismatch& wrong : removeWrongAdditions<Layout>(*object, unread)) {
            if (ignored != nullptr) {
                ignored->push_back(describe(std::move(wrong)));
            }
        }
    }
    Layout older;
    older.seenApps.reset();
    auto layout = decodeRecord(*json, std::move(older));
    if (layout && lacks(*json, JsonRecord<Layout>::hasCompletedSetup.key)) {
        // Older files lack this key. A user who has sorted an app is past the setup.
        layout->hasCompletedSetup = !layout->sections.empty();
    }
    if (layout) {
        layout->unread = std::move(unread);
    }
    return layout;
}

std::string encodeLayout(const Layout& layout) {
    Json json = writeJson(layout);
    auto& object = std::get<Json::Object>(json.value);
    object.insert(layout.unread.begin(), layout.unread.end());  // unless the user has chosen anew
    return json.print();
}

namespace {

/// The one key by which an export is recognised, read before the rest.
struct ExportMarker {
    std::optional<std::int64_t> velkoLayout;
};

}  // namespace

template <>
struct JsonRecord<ExportMarker> {
    static constexpr std::tuple fields{JsonField{"velkoLayout", &ExportMarker::velkoLayout}};
    static constexpr MissingKeys missingKeys = MissingKeys::fail;
};

template <>
struct JsonRecord<LayoutExport> {
    static constexpr auto fields = std::tuple_cat(
        std::tuple{
            JsonField{"velkoLayout", &LayoutExport::velkoLayout},
            JsonField{"sections", &LayoutExport::sections},
            JsonField{"alwaysKeep", &LayoutExport::alwaysKeep},
            JsonField{"reveal", &LayoutExport::reveal},
            JsonField{"newIconDefault", &LayoutExport::newIconDefault},
            JsonField{"neverPopOut", &LayoutExport::neverPopOut},
            JsonField{"showAllFromWidth", &LayoutExport::showAllFromWidth},
            JsonField{"shareKeep", &LayoutExport::shareKeep},
            JsonField{"presentingMinutes", &LayoutExport::presentingMinutes},
        },
        switchFields<LayoutExport, bool>(), switchFields<LayoutExport, std::optional<bool>>());
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
    LayoutExport exported{.sections = layout.sections,
                          .alwaysKeep = layout.alwaysKeep,
                          .reveal = layout.reveal,
                          .newIconDefault = layout.newIconDefault};
    if (!layout.neverPopOut.empty()) {
        exported.neverPopOut = layout.neverPopOut;
    }
    exported.showAllFromWidth = layout.showAllFromWidth;
    if (!layout.shareKeep.empty()) {
        exported.shareKeep = layout.shareKeep;
    }
    if (layout.presentingMinutes != 0) {
        exported.presentingMinutes = layout.presentingMinutes;
    }
    Switches::copy(layout, exported);
    return exported;
}

std::string LayoutExport::data() const {
    return encodeRecord(*this);
}

std::expected<LayoutExport, LayoutReadError> LayoutExport::read(std::string_view data) {
    const auto json = Json::parse(data);
    if (!json) {
        return std::unexpected(ImportError::notVelko);
    }
    const auto marker = decodeRecord<ExportMarker>(*json);
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

namespace {

template <class Record>
bool hasKey(std::string_view key) {
    return std::apply([&](const auto&... fields) { return ((fields.key == key) || ...); },
                      JsonRecord<Record>::fields);
}

}  // namespace

bool isLayoutKey(std::string_view key) {
    return hasKey<Layout>(key) || hasKey<LayoutExport>(key);
}

}  // namespace velko
