#include "Velko/Commands/Messages.h"

#include <algorithm>
#include <utility>

#include "VelkoCore/Files/Json.h"
#include "VelkoEngine/Text/Text.h"

namespace velko::commands {

namespace {

constexpr auto versionKey = "version";
constexpr auto wordsKey = "words";
constexpr auto outKey = "out";
constexpr auto errorKey = "error";
constexpr auto exitKey = "exit";

std::string lineOf(Json::Object object) {
    return Json{.value = std::move(object)}.printLine();
}

const Json* find(const Json::Object& object, std::string_view key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &found->second;
}

bool isProtocol(const Json* version) {
    const auto* const number = version == nullptr ? nullptr : std::get_if<std::uint64_t>(&version->value);
    return number != nullptr && std::cmp_equal(*number, protocol);
}

/// How much of the text fits into one piece, without a part of a character.
std::size_t pieceOf(std::string_view text) {
    std::size_t end = std::min(longestText, text.size());
    while (end < text.size() && end > longestText - 4 &&
           (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end;
    }
    return end;
}

}  // namespace

bool Lines::add(std::string_view bytes) {
    for (const char byte : bytes) {
        unfinished_ = byte == '\n' ? 0 : unfinished_ + 1;
        isTooLong_ = isTooLong_ || unfinished_ >= longestLine;
    }
    rest_ += bytes;
    return !isTooLong_;
}

std::optional<std::string> Lines::next() {
    const auto end = rest_.find('\n');
    if (end == std::string::npos) {
        return std::nullopt;
    }
    std::string line = rest_.substr(0, end);
    rest_.erase(0, end + 1);
    return line;
}

std::string requestLine(const std::vector<std::string>& words) {
    Json::Array array;
    std::ranges::transform(words, std::back_inserter(array),
                           [](const std::string& word) { return Json{word}; });
    return lineOf({{versionKey, {protocol}}, {wordsKey, {std::move(array)}}});
}

std::expected<std::vector<std::string>, std::string> readRequest(std::string_view line) {
    const auto json = Json::parse(line);
    const auto* const object = json ? std::get_if<Json::Object>(&json->value) : nullptr;
    if (object == nullptr) {
        return std::unexpected("A request is one JSON object on a line.");
    }
    if (!isProtocol(find(*object, versionKey))) {
        return std::unexpected("This Velko understands version " + std::to_string(protocol) +
                               " of requests.");
    }
    const Json* const list = find(*object, wordsKey);
    const auto* const array = list == nullptr ? nullptr : std::get_if<Json::Array>(&list->value);
    if (array == nullptr) {
        return std::unexpected("The request has no list of words.");
    }
    std::vector<std::string> words;
    for (const Json& each : *array) {
        const auto* const word = std::get_if<std::string>(&each.value);
        if (word == nullptr) {
            return std::unexpected("A word of the request is no text.");
        }
        words.push_back(*word);
    }
    return words;
}

std::string answerLines(const Answer& answer) {
    if (answer.kind == Answer::Kind::exit) {
        return lineOf({{exitKey, {std::int64_t{answer.status}}}});
    }
    const char* const key = answer.kind == Answer::Kind::out ? outKey : errorKey;
    const std::string whole = repairedUtf8(answer.text);
    std::string lines;
    for (std::string_view rest = whole; !rest.empty();) {
        const std::size_t size = pieceOf(rest);
        lines += lineOf({{key, {std::string(rest.substr(0, size))}}});
        rest.remove_prefix(size);
    }
    return lines;
}

std::expected<Answer, std::string> readAnswer(std::string_view line) {
    const auto json = Json::parse(line);
    const auto* const object = json ? std::get_if<Json::Object>(&json->value) : nullptr;
    if (object == nullptr || object->size() != 1) {
        return std::unexpected("Velko gave an answer that can't be read.");
    }
    const auto& [key, value] = *object->begin();
    if (const auto* const number = std::get_if<std::uint64_t>(&value.value);
        number != nullptr && key == exitKey && *number <= 255) {
        return Answer{.kind = Answer::Kind::exit, .status = static_cast<int>(*number)};
    }
    if (const auto* const text = std::get_if<std::string>(&value.value);
        text != nullptr && (key == outKey || key == errorKey)) {
        return Answer{.kind = key == outKey ? Answer::Kind::out : Answer::Kind::error, .text = *text};
    }
    return std::unexpected("Velko gave an answer that can't be read.");
}

}  // namespace velko::commands
