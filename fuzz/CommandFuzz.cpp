#include <algorithm>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "Velko/Commands/Grammar.h"
#include "Velko/Commands/Messages.h"

namespace {

using namespace velko;

/// The lines of the input, as words of a command line.
std::vector<std::string> wordsOf(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

/// What is understood is what the table allows.
void checkCall(const commands::Call& call) {
    const commands::Row& row = commands::rowOf(call.verb);
    fuzz::require(call.options.size() <= 1);
    for (const auto& [option, value] : call.options) {
        fuzz::require(option == row.option.word && value.empty() == row.option.value.name.empty());
    }
    fuzz::require(call.arguments.size() <= commands::Row::mostArguments);
    for (std::size_t index = 0; index < row.arguments.size(); ++index) {
        const commands::Argument& wanted = row.arguments.at(index);
        const bool isThere = index < call.arguments.size();
        fuzz::require(isThere ? !wanted.name.empty() : wanted.name.empty() || wanted.isOptional);
        const auto allowed = commands::wordsFor(wanted.kind);
        fuzz::require(!isThere || allowed.empty() ||
                      std::ranges::find(allowed, call.arguments[index]) != allowed.end());
    }
}

/// However a line is cut into pieces, the same lines come out.
std::vector<std::string> linesOf(std::string_view text, std::size_t piece, bool& isWhole) {
    commands::Lines lines;
    std::vector<std::string> found;
    isWhole = true;
    while (!text.empty() && isWhole) {
        isWhole = lines.add(text.substr(0, piece));
        text.remove_prefix(std::min(piece, text.size()));
        for (auto line = lines.next(); isWhole && line; line = lines.next()) {
            fuzz::require(line->size() < commands::longestLine && !line->contains('\n'));
            found.push_back(*line);
        }
    }
    return found;
}

}  // namespace

/// Reads the input as a command line, as an address, as a request and as an answer.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto words = wordsOf(text);
    if (const auto call = commands::parse(words)) {
        checkCall(*call);
    }
    if (const auto call = commands::parseAddress(text)) {
        checkCall(*call);
        fuzz::require(commands::rowOf(call->verb).address != commands::AddressRight::never);
    }
    if (const auto request = commands::readRequest(text)) {
        fuzz::require(commands::readRequest(commands::requestLine(*request)) == request);
    }
    if (const auto answer = commands::readAnswer(text)) {
        fuzz::require(answer->status >= 0 && answer->status <= 255);
    }
    bool isWhole = false;
    bool isWholeByOnes = false;
    const auto lines = linesOf(text, std::max<std::size_t>(size, 1), isWhole);
    fuzz::require(linesOf(text, 1, isWholeByOnes) == lines || !isWhole);
    fuzz::require(isWhole == isWholeByOnes);
    return 0;
}
