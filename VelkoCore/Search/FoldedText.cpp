#include "VelkoCore/Search/FoldedText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace velko {

namespace {

/// The letters from U+00C0 on without their accents. A point stands for what has no such letter.
constexpr std::string_view latinLetters =
    "aaaaaa.ceeeeiiiidnooooo.ouuuuy..aaaaaa.ceeeeiiiidnooooo.ouuuuy.y"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiii..jjkkkllllll."
    ".llnnnnnn...oooooo..rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs"
    "bbbb..occdddd....ffg...ikkl..nnooo..pp.....ttt.uu..yyzz........."
    ".............aaiioouuuuuuuuuu.aaaa..ggggkkoooo..j...gg..nnaa..oo"
    "aaaaeeeeiiiioooorrrruuuusstt..hhnd..zzaaeeooooooooyylntj..acclts"
    "z..bu.eejjqqrryy";
constexpr char32_t firstLatinLetter = 0xC0;

/// The same from U+1E00 on, where Vietnamese has its letters.
constexpr std::string_view moreLatinLetters =
    "aabbbbbbccddddddddddeeeeeeeeeeffgghhhhhhhhhhiiiikkkkkkllllllllmm"
    "mmmmnnnnnnnnoooooooopppprrrrrrrrssssssssssttttttttuuuuuuuuuuvvvv"
    "wwwwwwwwwwxxxxyyzzzzzzhtwy.s....aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeee"
    "eeeeeeeeiiiioooooooooooooooooooooooouuuuuuuuuuuuuuyyyyyyyy......";
constexpr char32_t firstOfMoreLatinLetters = 0x1E00;

struct Letters {
    char32_t from;
    std::u32string_view to;
};

/// What becomes of single letters, in ascending order.
constexpr auto singleLetters = std::to_array<Letters>({
    {0xC6, U"ae"},   {0xDE, U"th"},  {0xDF, U"ss"}, {0xE6, U"ae"}, {0xFE, U"th"}, {0x132, U"ij"},
    {0x133, U"ij"},  {0x13F, U"l"},  {0x140, U"l"}, {0x149, U"n"}, {0x14A, U"n"}, {0x14B, U"n"},
    {0x152, U"oe"},  {0x153, U"oe"}, {0x18F, U"ə"}, {0x386, U"α"}, {0x388, U"ε"}, {0x389, U"η"},
    {0x38A, U"ι"},   {0x38C, U"ο"},  {0x38E, U"υ"}, {0x38F, U"ω"}, {0x390, U"ι"}, {0x3AA, U"ι"},
    {0x3AB, U"υ"},   {0x3AC, U"α"},  {0x3AD, U"ε"}, {0x3AE, U"η"}, {0x3AF, U"ι"}, {0x3B0, U"υ"},
    {0x3C2, U"σ"},   {0x3CA, U"ι"},  {0x3CB, U"υ"}, {0x3CC, U"ο"}, {0x3CD, U"υ"}, {0x3CE, U"ω"},
    {0x400, U"е"},   {0x401, U"е"},  {0x403, U"г"}, {0x407, U"і"}, {0x40C, U"к"}, {0x40D, U"и"},
    {0x40E, U"у"},   {0x419, U"и"},  {0x439, U"и"}, {0x450, U"е"}, {0x451, U"е"}, {0x453, U"г"},
    {0x457, U"і"},   {0x45C, U"к"},  {0x45D, U"и"}, {0x45E, U"у"}, {0x490, U"г"}, {0x491, U"г"},
    {0x1E9E, U"ss"},
});
static_assert(std::ranges::is_sorted(singleLetters, {}, &Letters::from));

struct Range {
    char32_t first;
    char32_t last;

    [[nodiscard]] constexpr bool holds(char32_t c) const noexcept { return first <= c && c <= last; }
};

/// Accents that follow their letter, and signs that nobody sees.
constexpr auto unseen = std::to_array<Range>(
    {{0xAD, 0xAD}, {0x300, 0x36F}, {0x200B, 0x200F}, {0x2060, 0x2060}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}});

/// What separates words outside ASCII.
constexpr auto separators = std::to_array<Range>({{0x80, 0xA9},
                                                  {0xAB, 0xB4},
                                                  {0xB6, 0xB9},
                                                  {0xBB, 0xBF},
                                                  {0xD7, 0xD7},
                                                  {0xF7, 0xF7},
                                                  {0x2000, 0x206F},
                                                  {0x2190, 0x2BFF},
                                                  {0x3000, 0x3004},
                                                  {0x3008, 0x3020},
                                                  {0x30FB, 0x30FB},
                                                  {0xFFF0, 0xFFFF}});

constexpr auto capitals =
    std::to_array<Range>({{'A', 'Z'}, {0xC0, 0xDE}, {0x386, 0x3AB}, {0x400, 0x42F}, {0xFF21, 0xFF3A}});

template <std::size_t count>
constexpr bool isIn(const std::array<Range, count>& ranges, char32_t c) noexcept {
    return std::ranges::any_of(ranges, [c](const Range& range) { return range.holds(c); });
}

constexpr bool isDecimal(char32_t c) noexcept {
    return c >= '0' && c <= '9';
}

constexpr bool isSmallASCII(char32_t c) noexcept {
    return c >= 'a' && c <= 'z';
}

/// Adds a letter without its case and its accents. What is no letter and no digit adds nothing.
void addFolded(char32_t c, std::u32string& to) {
    if (c < 0x80) {
        const char32_t small = c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
        if (isSmallASCII(small) || isDecimal(small)) {
            to += small;
        }
        return;
    }
    if (isIn(unseen, c) || isIn(separators, c)) {
        return;
    }
    const auto* const single = std::ranges::lower_bound(singleLetters, c, {}, &Letters::from);
    if (single != singleLetters.end() && single->from == c) {
        to += single->to;
        return;
    }
    constexpr Range wideASCII{.first = 0xFF01, .last = 0xFF5E};
    if (wideASCII.holds(c)) {
        addFolded(c - wideASCII.first + '!', to);
        return;
    }
    const auto plain = [&](char32_t first, std::string_view letters) {
        const bool isThere = c >= first && c - first < letters.size() && letters[c - first] != '.';
        return isThere ? std::optional(static_cast<char32_t>(letters[c - first])) : std::nullopt;
    };
    if (const auto letter = plain(firstLatinLetter, latinLetters)) {
        to += *letter;
    } else if (const auto other = plain(firstOfMoreLatinLetters, moreLatinLetters)) {
        to += *other;
    } else if (Range{.first = 0x391, .last = 0x3A9}.holds(c) ||
               Range{.first = 0x410, .last = 0x42F}.holds(c)) {
        to.push_back(c + 0x20);
    } else if (Range{.first = 0x400, .last = 0x40F}.holds(c)) {
        to.push_back(c + 0x50);
    } else {
        to += c;
    }
}

/// Takes the first character from a text that is not empty. Nothing for a byte that is no UTF-8.
std::optional<char32_t> takeCharacter(std::string_view& text) {
    struct Form {
        unsigned char mask;
        unsigned char lead;
        std::size_t length;
        char32_t least;  ///< a smaller number has a shorter form
    };
    static constexpr auto forms = std::to_array<Form>(
        {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}});
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char lead = byte(0);
    const auto* const form =
        std::ranges::find_if(forms, [&](const Form& each) { return (lead & each.mask) == each.lead; });
    bool isWhole = form != forms.end() && text.size() >= form->length;
    char32_t character = isWhole ? static_cast<char32_t>(lead & ~form->mask & 0xFF) : 0;
    for (std::size_t index = 1; isWhole && index < form->length; ++index) {
        isWhole = (byte(index) & 0xC0) == 0x80;
        character = (character << 6) | static_cast<char32_t>(byte(index) & 0x3F);
    }
    constexpr char32_t lastCharacter = 0x10FFFF;
    if (!isWhole || character < form->least || character > lastCharacter) {
        text.remove_prefix(1);
        return std::nullopt;
    }
    text.remove_prefix(form->length);
    return character;
}

enum class CharacterKind : std::uint8_t { separator, digit, capital, other };

CharacterKind kindOf(char32_t c, bool hasLetters) {
    if (!hasLetters) {
        return CharacterKind::separator;
    }
    return isDecimal(c) ? CharacterKind::digit
                        : (isIn(capitals, c) ? CharacterKind::capital : CharacterKind::other);
}

/// How far after a capital its small letter is; 0 for a letter that is none of these.
char32_t distanceFromCapital(char32_t c) {
    struct Distance {
        Range small;
        char32_t distance;
    };
    static constexpr auto distances = std::to_array<Distance>({{{'a', 'z'}, 0x20},
                                                               {{0xE0, 0xF6}, 0x20},
                                                               {{0xF8, 0xFE}, 0x20},
                                                               {{0x3B1, 0x3C1}, 0x20},
                                                               {{0x3C3, 0x3CB}, 0x20},
                                                               {{0x430, 0x44F}, 0x20},
                                                               {{0x450, 0x45F}, 0x50}});
    const auto* const found =
        std::ranges::find_if(distances, [c](const Distance& each) { return each.small.holds(c); });
    return found == distances.end() ? 0 : found->distance;
}

}  // namespace

std::string capital(std::string_view letter) {
    std::string_view rest = letter;
    const char32_t small = rest.empty() ? 0 : takeCharacter(rest).value_or(0);
    const char32_t distance = rest.empty() ? distanceFromCapital(small) : 0;
    const char32_t big = small - distance;
    if (distance == 0) {
        return std::string(letter);
    }
    if (big < 0x80) {
        return {static_cast<char>(big)};
    }
    return {static_cast<char>(0xC0 | (big >> 6)), static_cast<char>(0x80 | (big & 0x3F))};
}

FoldedText FoldedText::of(std::string_view text) {
    FoldedText folded;
    CharacterKind before = CharacterKind::separator;
    std::size_t lastCapital = 0;  // the index of the letter before, if that is a capital
    while (!text.empty()) {
        const auto taken = takeCharacter(text);
        const char32_t c = taken.value_or(' ');
        if (isIn(unseen, c)) {
            continue;
        }
        const std::size_t place = folded.letters.size();
        addFolded(c, folded.letters);
        const CharacterKind kind = kindOf(c, folded.letters.size() > place);
        if (kind == CharacterKind::separator) {
            before = kind;
            continue;
        }
        const bool isDigitBoundary = (kind == CharacterKind::digit) != (before == CharacterKind::digit);
        const bool isCapitalAfterSmall = kind == CharacterKind::capital && before == CharacterKind::other;
        if (before == CharacterKind::separator || isDigitBoundary || isCapitalAfterSmall) {
            folded.wordStarts.push_back(place);
        } else if (kind == CharacterKind::other && before == CharacterKind::capital &&
                   folded.wordStarts.back() < lastCapital) {
            folded.wordStarts.push_back(lastCapital);  // as the E in "PDFExpert"
        }
        lastCapital = place;
        before = kind;
    }
    return folded;
}

}  // namespace velko
