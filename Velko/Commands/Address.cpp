#include <algorithm>
#include <charconv>
#include <optional>
#include <ranges>
#include <system_error>

#include "Velko/Commands/Grammar.h"

namespace velko::commands {

namespace {

constexpr std::string_view scheme = "velko:";

/// The text without percent signs; nothing if they are wrong, or stand for a control character.
std::optional<std::string> decoded(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        auto byte = static_cast<unsigned char>(text.front());
        if (byte == '%') {
            const std::string_view digits = text.substr(1, 2);
            const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
            if (digits.size() != 2 || error != std::errc() || end != digits.data() + digits.size()) {
                return std::nullopt;
            }
            text.remove_prefix(2);
        }
        if (byte < ' ' || byte == 0x7F) {
            return std::nullopt;
        }
        plain += static_cast<char>(byte);
        text.remove_prefix(1);
    }
    return plain;
}

/// The command's words, options first: "--buried" of "?buried", "--timeout=5" of "?timeout=5".
std::optional<std::vector<std::string>> wordsIn(std::string_view path, std::string_view query) {
    std::vector<std::string> words;
    std::vector<std::string> arguments;
    for (const auto part : path | std::views::split('/')) {
        const auto word = decoded(std::string_view(part));
        if (!word) {
            return std::nullopt;
        }
        (words.empty() ? words : arguments).push_back(*word);
    }
    for (const auto part : query | std::views::split('&')) {
        const auto word = decoded(std::string_view(part));
        if (!word) {
            return std::nullopt;
        }
        if (!word->empty()) {
            words.push_back("--" + *word);
        }
    }
    words.emplace_back("--");
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

}  // namespace

std::expected<Call, std::string> parseAddress(std::string_view address) {
    const bool isOurs = address.size() <= longestAddress && address.size() > scheme.size() &&
                        std::ranges::equal(address.substr(0, scheme.size()), scheme, {}, [](char letter) {
                            return letter >= 'A' && letter <= 'Z' ? letter + 32 : letter;
                        });
    if (!isOurs) {
        return std::unexpected("It is no address of Velko's.");
    }
    std::string_view rest = address.substr(scheme.size());
    rest.remove_prefix(rest.starts_with("//") ? 2 : 0);
    const auto mark = rest.find('?');
    std::string_view path = rest.substr(0, mark);
    const std::string_view query = mark == std::string_view::npos ? "" : rest.substr(mark + 1);
    path.remove_suffix(path.ends_with('/') ? 1 : 0);
    const auto words = wordsIn(path, query);
    if (!words || rest.contains('#')) {
        return std::unexpected("It is not written as an address.");
    }
    const Row* const row = rowNamed(words->front());
    if (row == nullptr || row->address == AddressRight::never) {
        return std::unexpected("Addresses may not do that.");
    }
    return parse(*words);
}

}  // namespace velko::commands
