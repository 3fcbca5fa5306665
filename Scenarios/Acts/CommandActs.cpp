#include <algorithm>
#include <string>
#include <vector>

#include "Scenarios/Acts/Acts.h"
#include "Scenarios/Language/Words.h"
#include "Simulator/Desktop/SimulatedCommandDoor.h"
#include "Simulator/Desktop/SimulatedDialogs.h"
#include "Velko/Commands/Messages.h"

namespace velko::script {

namespace {

using scenarios::World;

/// What the newest caller has been told so far.
std::string answerSoFar(World& world) {
    SimulatedCommandDoor& door = world.mac().commands;
    commands::Lines lines;
    std::string text;
    const auto newest = door.newest();
    const bool isReadable = newest && lines.add(door.heard(*newest));
    for (auto line = lines.next(); isReadable && line; line = lines.next()) {
        text += commands::readAnswer(*line).value_or(commands::Answer()).text;
    }
    return text;
}

/// The words are separated as in a scenario: those with spaces stand in quotation marks.
Done giveCommand(const Step& step, World& world) {
    const auto tokens = tokensOf(step.text.value_or(""));
    if (!tokens) {
        return std::unexpected(tokens.error());
    }
    std::vector<std::string> words;
    std::ranges::transform(*tokens, std::back_inserter(words), &Token::text);
    return world.mac().commands.come(commands::requestLine(words)) ? Done()
                                                                   : std::unexpected("Velko does not run.");
}

Done openAddress(const Step& step, World& world) {
    return world.openAddress(step.text.value_or("")) ? Done() : std::unexpected("Velko does not run.");
}

Done answerQuestion(const Step& step, World& world) {
    if (world.mac().dialogs.question() == nullptr) {
        return std::unexpected("Nothing is asked in a dialog.");
    }
    world.mac().dialogs.answer(step.word == "agree");
    return {};
}

Done expectAnswer(const Step& step, World& world) {
    const std::string text = answerSoFar(world);
    return text.contains(step.text.value_or("")) ? Done() : std::unexpected("The answer is: " + text);
}

constexpr auto commandVerbs = std::to_array<MacAct>({
    {Verb::command, giveCommand},
    {Verb::openAddress, openAddress},
    {Verb::answer, answerQuestion},
    {Verb::expectAnswer, expectAnswer},
});

}  // namespace

std::span<const MacAct> commandActs() {
    return commandVerbs;
}

}  // namespace velko::script
