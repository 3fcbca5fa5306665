#include "VelkoCore/Layout/ManagedLayout.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <variant>

#include "VelkoCore/Files/JsonRecord.h"
#include "VelkoCore/Layout/LayoutFormats.h"
#include "VelkoCore/Layout/Switches.h"

namespace velko {

namespace {

constexpr std::string_view revealKey = "reveal";
constexpr std::string_view autopilotKey = "autopilot";

/// The object in a file that holds a switch; empty for the file's own.
std::string_view objectOf(const SwitchRow& row) {
    if (std::holds_alternative<bool RevealSettings::*>(row.stored)) {
        return revealKey;
    }
    return std::holds_alternative<bool AutopilotState::*>(row.stored) ? autopilotKey : std::string_view();
}

/// Reads one entry after the other. A wrong one is left out and told of.
class EntryReader final {
 public:
    EntryReader(const Json::Object& root, ManagedLayout::Found& found) : root_(root), found_(found) {}

    void fault(JsonMismatch problem) {
        if (found_.faults.size() < ManagedLayout::Found::mostFaults) {
            found_.faults.push_back(describe(std::move(problem)).description);
        }
    }

    /// The entry of that key; null when there is none.
    [[nodiscard]] const Json* entry(const Json::Object& object, std::string_view key) const {
        const auto found = object.find(key);
        return found == object.end() || found->second.isNull() ? nullptr : &found->second;
    }

    template <class Content>
    [[nodiscard]] const Content* entry(std::string_view key, std::string_view expected) {
        const Json* const json = entry(root_, key);
        if (json == nullptr) {
            return nullptr;
        }
        const auto* const content = std::get_if<Content>(&json->value);
        if (content == nullptr) {
            fault(std::move(mismatch(expected, *json).error()).inside(key));
        }
        return content;
    }

    /// Reads an entry of the file's own object, or of one within it.
    template <class Value>
    [[nodiscard]] std::optional<Value> value(std::string_view within, std::string_view key) {
        const auto* const object = within.empty() ? &root_ : entry<Json::Object>(within, "an object");
        const Json* const json = object == nullptr ? nullptr : entry(*object, key);
        if (json == nullptr) {
            return std::nullopt;
        }
        Value value{};
        if (JsonRead read = readJson(*json, value); !read) {
            JsonMismatch problem = std::move(read.error()).inside(key);
            fault(within.empty() ? std::move(problem) : std::move(problem).inside(within));
            return std::nullopt;
        }
        return value;
    }

    void places(std::string_view key, std::map<BundleID, Section>& sections) {
        if (const auto* const object = entry<Json::Object>(key, "an object")) {
            for (const auto& [bundleID, json] : *object) {
                Section section{};
                if (JsonRead read = readJson(json, section); read) {
                    sections.emplace(bundleID, section);
                } else {
                    fault(std::move(read.error()).inside(bundleID).inside(key));
                }
            }
        }
    }

    void apps(std::string_view key, BundleIDs& apps) {
        if (const auto* const array = entry<Json::Array>(key, "a list")) {
            for (std::size_t index = 0; index < array->size(); ++index) {
                BundleID bundleID;
                if (JsonRead read = readJson((*array)[index], bundleID); read) {
                    apps.insert(std::move(bundleID));
                } else {
                    fault(std::move(read.error()).inside(index).inside(key));
                }
            }
        }
    }

    /// Somebody who mistypes a key would wait for its effect for ever.
    void unknownKeys() {
        for (const auto& [key, json] : root_) {
            if (!isLayoutKey(key)) {
                fault(JsonMismatch{.path = {}, .problem = "this Velko knows no such key"}.inside(key));
            }
        }
    }

 private:
    const Json::Object& root_;
    ManagedLayout::Found& found_;
};

/// Whether a file was written for a newer Velko.
bool isNewer(EntryReader& reader) {
    const auto version = reader.value<std::int64_t>("", "version");
    const auto format = reader.value<std::int64_t>("", "velkoLayout");
    return version > Layout::currentVersion || format > LayoutExport::currentFormat;
}

template <class Value>
void restore(std::map<BundleID, Value>& edited, const std::map<BundleID, Value>& own, const BundleID& app) {
    if (const auto mine = own.find(app); mine != own.end()) {
        edited.insert_or_assign(app, mine->second);
    } else {
        edited.erase(app);
    }
}

void restore(BundleIDs& edited, const BundleIDs& own, const BundleID& app) {
    if (own.contains(app)) {
        edited.insert(app);
    } else {
        edited.erase(app);
    }
}

template <class Value>
void layOver(Value& own, const std::optional<Value>& managed) {
    own = managed.value_or(own);
}

}  // namespace

std::size_t ManagedLayout::countOfPreferences() const {
    const std::array single{newIconDefault.has_value(), autoTuckSeconds.has_value(), notchedStyle.has_value(),
                            otherStyle.has_value(),     !alwaysKeep.empty(),         !neverPopOut.empty()};
    return switches.size() + static_cast<std::size_t>(std::ranges::count(single, true));
}

RevealSettings ManagedLayout::over(RevealSettings own) const {
    Layout whole;
    whole.reveal = own;
    return over(std::move(whole)).reveal;
}

Layout ManagedLayout::over(Layout own) const {
    for (const auto& [app, section] : sections) {
        own.place(app, section);  // nobody asks about it
        own.alwaysKeep.insert(app);
    }
    own.alwaysKeep.insert(alwaysKeep.begin(), alwaysKeep.end());
    own.neverPopOut.insert(neverPopOut.begin(), neverPopOut.end());
    layOver(own.newIconDefault, newIconDefault);
    layOver(own.reveal.autoTuckSeconds, autoTuckSeconds);
    layOver(own.reveal.notchedStyle, notchedStyle);
    layOver(own.reveal.otherStyle, otherStyle);
    for (const auto& [which, on] : switches) {
        Switches::set(own, which, on);
    }
    if (sets(Switch::leaveNewIconsOut)) {
        own.moveWaiting();
    }
    return own;
}

Layout ManagedLayout::ownPart(Layout edited, const Layout& own) const {
    if (!sections.empty()) {
        // Who waited waits again when the organisation lets go, in the old order.
        std::vector<BundleID> inbox;
        std::ranges::copy_if(own.inbox, std::back_inserter(inbox),
                             [&](const BundleID& app) { return places(app) || edited.isWaiting(app); });
        std::ranges::copy_if(edited.inbox, std::back_inserter(inbox),
                             [&](const BundleID& app) { return !places(app) && !own.isWaiting(app); });
        edited.inbox = std::move(inbox);
    }
    for (const auto& [app, section] : sections) {
        restore(edited.sections, own.sections, app);
        restore(edited.waitingGoneSince, own.waitingGoneSince, app);
        restore(edited.alwaysKeep, own.alwaysKeep, app);
    }
    for (const BundleID& app : alwaysKeep) {
        restore(edited.alwaysKeep, own.alwaysKeep, app);
    }
    for (const BundleID& app : neverPopOut) {
        restore(edited.neverPopOut, own.neverPopOut, app);
    }
    edited.newIconDefault = newIconDefault ? own.newIconDefault : edited.newIconDefault;
    edited.reveal.autoTuckSeconds =
        autoTuckSeconds ? own.reveal.autoTuckSeconds : edited.reveal.autoTuckSeconds;
    edited.reveal.notchedStyle = notchedStyle ? own.reveal.notchedStyle : edited.reveal.notchedStyle;
    edited.reveal.otherStyle = otherStyle ? own.reveal.otherStyle : edited.reveal.otherStyle;
    for (const auto& [which, on] : switches) {
        Switches::set(edited, which, Switches::isOn(own, which));
    }
    if (sets(Switch::leaveNewIconsOut)) {
        for (const BundleID& app : edited.inbox) {
            if (own.isWaiting(app)) {
                restore(edited.sections, own.sections, app);
            } else {
                edited.sections.insert_or_assign(app, edited.waitingSection());
            }
        }
    }
    return edited;
}

std::expected<ManagedLayout::Found, std::string> ManagedLayout::read(std::string_view text) {
    const auto json = Json::parse(text);
    if (!json) {
        return std::unexpected(json.error().description);
    }
    const auto* const root = std::get_if<Json::Object>(&json->value);
    if (root == nullptr) {
        return std::unexpected(describe(std::move(mismatch("an object", *json).error())).description);
    }
    Found found;
    EntryReader reader(*root, found);
    if (isNewer(reader)) {
        return std::unexpected("it is for a newer Velko");
    }
    ManagedLayout& layout = found.layout;
    reader.places("sections", layout.sections);
    reader.apps("alwaysKeep", layout.alwaysKeep);
    reader.apps("neverPopOut", layout.neverPopOut);
    layout.newIconDefault = reader.value<Section>("", "newIconDefault");
    layout.autoTuckSeconds = reader.value<std::int64_t>(revealKey, "autoTuckSeconds")
                                 .transform(RevealSettings::normalisedAutoTuck);
    layout.notchedStyle = reader.value<RevealStyle>(revealKey, "notchedStyle");
    layout.otherStyle = reader.value<RevealStyle>(revealKey, "otherStyle");
    for (const SwitchRow& row : Switches::all) {
        if (const auto on = reader.value<bool>(objectOf(row), row.key)) {
            layout.switches.emplace(row.which, *on);
        }
    }
    reader.unknownKeys();
    // A part that is no object was found wrong once for each entry that it should have.
    std::ranges::sort(found.faults);
    const auto doubled = std::ranges::unique(found.faults);
    found.faults.erase(doubled.begin(), doubled.end());
    return found;
}

}  // namespace velko
