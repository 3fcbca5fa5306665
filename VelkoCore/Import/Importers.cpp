#include "VelkoCore/Import/Importers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "VelkoCore/Layout/Section.h"

namespace velko {

namespace {

using Dictionary = PropertyList::Dictionary;

template <class Kind>
const Kind* valueIn(const Dictionary& dictionary, const std::string& key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? nullptr : found->second.as<Kind>();
}

std::optional<bool> booleanIn(const Dictionary& dictionary, const std::string& key) {
    const auto* value = valueIn<bool>(dictionary, key);
    return value == nullptr ? std::nullopt : std::optional{*value};
}

/// A real or a whole number. NaN counts as missing.
std::optional<double> numberIn(const Dictionary& dictionary, const std::string& key) {
    if (const auto* real = valueIn<double>(dictionary, key)) {
        return std::isnan(*real) ? std::nullopt : std::optional{*real};
    }
    const auto* integer = valueIn<std::int64_t>(dictionary, key);
    return integer == nullptr ? std::nullopt : std::optional{static_cast<double>(*integer)};
}

/// A delay as the layout keeps it. It is clamped before it is rounded, because a very large number has no
/// integer.
std::int64_t autoTuckFor(double seconds) {
    if (seconds <= 0) {
        return 0;
    }
    constexpr double shortest = RevealSettings::shortestAutoTuck;
    constexpr double longest = RevealSettings::longestAutoTuck;
    return std::llround(std::clamp(seconds, shortest, longest));
}

/// The texts of a list; none if it is missing or holds anything else.
std::vector<std::string_view> textsIn(const Dictionary& dictionary, const std::string& key) {
    const auto* array = valueIn<PropertyList::Array>(dictionary, key);
    if (array == nullptr) {
        return {};
    }
    std::vector<std::string_view> texts;
    texts.reserve(array->size());
    for (const PropertyList& element : *array) {
        const auto* text = element.as<std::string>();
        if (text == nullptr) {
            return {};
        }
        texts.push_back(*text);
    }
    return texts;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// Finds the app that owns an item of Bartender's lists.
class ItemOwners {
 public:
    explicit ItemOwners(const BundleIDs& known) : known_{known} {
        for (const BundleID& bundleID : known) {
            longest_ = std::max(longest_, bundleID.size());
        }
    }

    [[nodiscard]] std::optional<BundleID> ownerOf(std::string_view item) const {
        item = trimmed(item);
        for (std::size_t length = std::min(item.size(), longest_); length > 0; --length) {
            const bool ends = length == item.size() || item[length] == '-' || item[length] == '.';
            if (!ends) {
                continue;
            }
            BundleID candidate{item.substr(0, length)};
            if (known_.contains(candidate)) {
                return candidate;
            }
        }
        const auto suffix = item.find("-Item");
        if (suffix == std::string_view::npos || suffix == 0) {
            return std::nullopt;
        }
        return BundleID{item.substr(0, suffix)};
    }

 private:
    const BundleIDs& known_;
    std::size_t longest_ = 0;
};

struct SourceList {
    const char* key;
    Section section;
};

std::optional<Dictionary> preferencesOf(std::string_view domain, const Importers::Request& request) {
    const auto path = request.directory / "Library" / "Preferences" / (std::string{domain} + ".plist");
    auto list = readPropertyList(path, request.reader);
    auto* dictionary = list ? std::get_if<Dictionary>(&list->value) : nullptr;
    return dictionary == nullptr ? std::nullopt : std::optional{std::move(*dictionary)};
}

}  // namespace

std::optional<ImportedLayout> Importers::bartender(const Dictionary& preferences,
                                                   const BundleIDs& knownBundleIDs) {
    const auto* settings = valueIn<Dictionary>(preferences, "ProfileSettings");
    const auto* profile = settings == nullptr ? nullptr : valueIn<Dictionary>(*settings, "activeProfile");
    if (profile == nullptr) {
        return std::nullopt;
    }
    constexpr std::array lists{SourceList{"Show", Section::bar}, SourceList{"Hide", Section::tucked},
                               SourceList{"AlwaysHide", Section::buried}};
    const ItemOwners owners{knownBundleIDs};
    ImportedLayout layout{.source = "Bartender", .sections = {}, .autoTuckSeconds = {}, .hover = {}};
    for (const SourceList& list : lists) {
        for (const std::string_view item : textsIn(*profile, list.key)) {
            const auto owner = owners.ownerOf(item);
            if (owner && !owner->starts_with("com.surteesstudios.")) {
                // The lists come from the least to the most hidden section, so the later one holds.
                layout.sections.insert_or_assign(*owner, list.section);
            }
        }
    }
    return layout.sections.empty() ? std::nullopt : std::optional{std::move(layout)};
}

std::optional<ImportedLayout> Importers::ice(const Dictionary& preferences) {
    constexpr double usualDelay = 6;
    ImportedLayout layout{.source = "Ice",
                          .sections = {},
                          .autoTuckSeconds = {},
                          .hover = booleanIn(preferences, "ShowOnHover")};
    if (const auto hidesAgain = booleanIn(preferences, "AutoRehide")) {
        const double delay = numberIn(preferences, "RehideInterval").value_or(usualDelay);
        layout.autoTuckSeconds = *hidesAgain ? autoTuckFor(delay) : 0;
        return layout;
    }
    return layout.hover ? std::optional{std::move(layout)} : std::nullopt;
}

std::optional<ImportedLayout> Importers::vanilla(const Dictionary& preferences) {
    ImportedLayout layout{.source = "Vanilla", .sections = {}, .autoTuckSeconds = {}, .hover = {}};
    if (const auto delay = numberIn(preferences, "auto-collapse-interval")) {
        layout.autoTuckSeconds = autoTuckFor(*delay);
    }
    return layout;
}

namespace {

/// An organiser that Velko knows: the domain of its preferences, and what reads them.
struct Importer {
    std::string_view domain;
    std::optional<ImportedLayout> (*read)(const Dictionary& preferences, const BundleIDs& knownBundleIDs);
};

/// In the order in which they are asked.
constexpr std::array importers{
    Importer{Importers::bartenderDomains[0], Importers::bartender},
    Importer{Importers::bartenderDomains[1], Importers::bartender},
    Importer{Importers::iceDomain,
             [](const auto& preferences, const auto&) { return Importers::ice(preferences); }},
    Importer{Importers::vanillaDomain,
             [](const auto& preferences, const auto&) { return Importers::vanilla(preferences); }},
};

}  // namespace

std::optional<ImportedLayout> Importers::detect(const Request& request) {
    for (const Importer& importer : importers) {
        if (const auto preferences = preferencesOf(importer.domain, request)) {
            if (auto layout = importer.read(*preferences, request.knownBundleIDs)) {
                layout->organiser = importer.domain;
                return layout;
            }
        }
    }
    return std::nullopt;
}

}  // namespace velko
