#include <gtest/gtest.h>
#include <random>

#include "Scenarios/Language/Step.h"
#include "Scenarios/Language/Verbs.h"
#include "Scenarios/Language/Words.h"

namespace velko::script {
namespace {

using namespace std::chrono_literals;

/// Steps with any operands that their verbs take.
class AnySteps {
 public:
    Step of(const VerbRow& row) {
        Step step{.verb = row.verb, .control = std::string(row.control)};
        for (const auto& part : Pattern::of(row.pattern).parts) {
            if (!part.isOptional || upTo(1) == 1) {
                fill(step, part.operand);
            }
        }
        return step;
    }

 private:
    std::int64_t upTo(std::int64_t most) {
        return std::uniform_int_distribution(std::int64_t{0}, most)(chance_);
    }

    std::string oneOf(const std::vector<std::string>& words) {
        return words[static_cast<std::size_t>(upTo(static_cast<std::int64_t>(words.size()) - 1))];
    }

    void fill(Step& step, std::string_view operand) {
        if (operand.empty()) {
            step.flag = true;
        } else if (const auto* number = numberOperand(operand)) {
            step.*(number->field) = number->least + upTo(number->most - number->least);
        } else if (const auto* words = wordOperand(operand)) {
            const auto all = wordsOf(words->words);
            step.word = oneOf({all.begin(), all.end()});
        } else if (operand == "APP") {
            step.app = oneOf({"Slack", "Google Drive", "com.example.heavy", "a.\"b\\"});
        } else if (operand == "CONTROL") {
            step.control = oneOf({"keep:com.example.app", "two words"});
        } else if (operand == "VALUE") {
            step.value = oneOf({"", "on", "-5", "After 3 seconds"});
        } else if (operand == "DURATION") {
            const auto unit = units()[static_cast<std::size_t>(upTo(4))].milliseconds;
            step.duration = std::chrono::milliseconds(upTo(longestMilliseconds / unit) * unit);
        } else {
            step.text = operand == "FILE" ? oneOf({"a", "My-Layout_2.velko"})
                                          : oneOf({"", "icon", R"(# 5 "new" \)", "  naïve — 日本  "});
        }
    }

    std::mt19937 chance_{20260302};
};

TEST(Step, IsReadAsItWasWritten) {
    AnySteps any;
    for (const VerbRow& row : verbs()) {
        for (int times = 0; times < 40; ++times) {
            const Step step = any.of(row);
            const auto read = parse(print(step));
            ASSERT_TRUE(read && *read) << print(step) << ": " << (read ? "no step" : read.error());
            EXPECT_EQ(**read, step) << print(step);
        }
    }
}

TEST(Step, IsWrittenInFewWords) {
    const std::pair<const char*, Step> rows[] = {
        {"wait 2 s", {.verb = Verb::wait, .duration = 2s}},
        {"wait 1 day", {.verb = Verb::wait, .duration = 24h}},
        {"sleep 1500 ms", {.verb = Verb::sleep, .duration = 1500ms}},
        {"launch \"Google Drive\" icons 2 heavy",
         {.verb = Verb::launch, .app = "Google Drive", .icons = 2, .flag = true}},
        {R"(icon title Slack "3 \"new\"")", {.verb = Verb::iconTitle, .app = "Slack", .text = "3 \"new\""}},
    };
    for (const auto& [line, step] : rows) {
        EXPECT_EQ(print(step), line);
        EXPECT_EQ(*parse(line), step);
    }
    EXPECT_EQ(*parse("\tlaunch  Slack heavy width 30 # in any order\r"),
              (Step{.verb = Verb::launch, .app = "Slack", .width = 30, .flag = true}));
    for (const char* const nothing : {"", "  \t\r", "# wait 2 s"}) {
        EXPECT_EQ(parse(nothing).value(), std::nullopt);
    }
}

TEST(Step, SaysInOneLineWhatIsWrong) {
    const std::pair<std::string, std::string> rows[] = {
        {"tidy", "There is no verb \"tidy\"."},
        {"\"wait\" 2 s", "There is no verb \"wait\"."},
        {"menu", "After \"menu\" comes one of: open, close."},
        {"wait", "DURATION is missing. It is written: wait DURATION"},
        {"wait 2", "\"2\" is no duration: a whole number, a space and ms, s, min, h or days."},
        {"wait 2 weeks", "\"2 weeks\" is no duration: a whole number, a space and ms, s, min, h or days."},
        {"wait -1 s", "A duration lies between nothing and ten years."},
        {"wait 9223372036854775807 days", "A duration lies between nothing and ten years."},
        {"wait 2 s now", "\"now\" is not understood here. It is written: wait DURATION"},
        {"quit Slak", "No neighbour is called \"Slak\", and it is no bundle identifier."},
        {"place Slack top", "\"top\" is none of: bar tucked buried."},
        {"launch Slack icons 21", "\"21\" is not a whole number from 0 to 20."},
        {"launch Slack heavy heavy",
         "\"heavy\" is not understood here. It is written: launch APP [icons "
         "ICONS] [width POINTS] [title TEXT] [heavy]"},
        {"launch Slack icons",
         "ICONS is missing. It is written: launch APP [icons ICONS] [width POINTS] "
         "[title TEXT] [heavy]"},
        {"export ../layout.json",
         "\"../layout.json\" is no file's name of letters, digits, dots and dashes."},
        {"say \"Hello", "A text has no closing quotation mark."},
        {"say a\x1b[2J", "There is a control character in the line."},
        {std::string(1001, ' '), "The line is longer than 1000 bytes."},
    };
    for (const auto& [line, message] : rows) {
        const auto step = parse(line);
        EXPECT_EQ(step ? "no mistake" : step.error(), message) << line;
    }
}

}  // namespace
}  // namespace velko::script
