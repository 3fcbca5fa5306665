#include "VelkoCore/Search/AppSearch.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <ranges>
#include <tuple>
#include <utility>

#include "VelkoCore/Search/NameOrder.h"

namespace velko {

namespace {

/// What the user has typed.
struct TypedText {
    std::u32string letters;
    std::vector<std::u32string> words;  ///< the same letters, as spaces divide them
};

TypedText typedText(std::string_view text) {
    TypedText typed;
    for (const auto part : std::views::split(text, ' ')) {
        const std::u32string word = FoldedText::of(std::string_view(part.begin(), part.end())).letters;
        if (!word.empty()) {
            typed.letters += word;
            typed.words.push_back(word);
        }
    }
    return typed;
}

/// The earliest match of each word is the best one: it leaves the most of the name for the words that follow.
bool beginsWords(const TypedText& typed, const FoldedText& name) {
    auto start = name.wordStarts.begin();
    std::size_t end = 0;  // of what the words before have matched
    for (const std::u32string& word : typed.words) {
        start = std::find_if(start, name.wordStarts.end(), [&](std::size_t place) {
            return place >= end && name.letters.compare(place, word.size(), word) == 0;
        });
        if (start == name.wordStarts.end()) {
            return false;
        }
        end = *start + word.size();
    }
    return true;
}

/// Whether the wanted letters come in that order among those found.
bool isInOrder(const std::u32string& wanted, const auto& found) {
    auto next = wanted.begin();
    for (const char32_t letter : found) {
        if (next != wanted.end() && *next == letter) {
            ++next;
        }
    }
    return next == wanted.end();
}

std::optional<NameMatch> matchOf(const TypedText& typed, const FoldedText& name) {
    if (beginsWords(typed, name)) {
        return NameMatch::wordStarts;
    }
    const auto initials =
        name.wordStarts | std::views::transform([&](std::size_t place) { return name.letters[place]; });
    if (isInOrder(typed.letters, initials)) {
        return NameMatch::initials;
    }
    return isInOrder(typed.letters, name.letters) ? std::optional(NameMatch::subsequence) : std::nullopt;
}

}  // namespace

AppSearch::AppSearch(std::vector<App> apps) {
    std::vector<std::pair<NameOrder, App>> ordered;
    ordered.reserve(apps.size());
    for (App& app : apps) {
        NameOrder name(app.name);
        ordered.emplace_back(std::move(name), std::move(app));
    }
    std::ranges::sort(ordered, [](const auto& left, const auto& right) {
        return std::tie(right.second.lastClicked, left.first, left.second.bundleID) <
               std::tie(left.second.lastClicked, right.first, right.second.bundleID);
    });
    entries_.reserve(ordered.size());
    for (auto& [order, app] : ordered) {
        FoldedText name = FoldedText::of(app.name);
        entries_.push_back({.app = std::move(app), .name = std::move(name)});
    }
}

std::vector<AppSearch::App> AppSearch::find(std::string_view text) const {
    const TypedText typed = typedText(text);
    std::array<std::vector<const App*>, 3> matches;  // for each way to match
    for (const Entry& entry : entries_) {
        if (const auto match = matchOf(typed, entry.name)) {
            matches.at(static_cast<std::size_t>(*match)).push_back(&entry.app);
        }
    }
    std::vector<App> found;
    for (const auto& equals : matches) {
        std::ranges::transform(equals, std::back_inserter(found), [](const App* app) { return *app; });
    }
    return found;
}

std::optional<NameMatch> AppSearch::match(std::string_view typed, std::string_view name) {
    return matchOf(typedText(typed), FoldedText::of(name));
}

}  // namespace velko
