#include <algorithm>
#include <gtest/gtest.h>

#include "Velko/Commands/Grammar.h"
#include "Velko/Commands/GrammarTexts.h"
#include "Velko/Commands/Messages.h"

namespace velko::commands {
namespace {

using Words = std::vector<std::string>;

std::string whyNot(const Words& words) {
    const auto call = parse(words);
    return call ? "" : call.error();
}

TEST(Grammar, UnderstandsWhatItsTableSays) {
    EXPECT_EQ(parse({"show", "--buried"}), (Call{.verb = Verb::show, .options = {{"--buried", ""}}}));
    EXPECT_EQ(parse({"place", "Google Drive", "tucked"}),
              (Call{.verb = Verb::place, .arguments = {"Google Drive", "tucked"}}));
    EXPECT_EQ(parse({"wait-until", "--timeout", "5", "tidy"}), parse({"wait-until", "tidy", "--timeout=5"}));
    EXPECT_EQ(parse({"layout", "export", "--", "-f"}),
              (Call{.verb = Verb::layoutExport, .arguments = {"-f"}}));
    EXPECT_EQ(parse({"help", "layout", "import"}), parse({"layout", "import", "--help"}));
    EXPECT_EQ(parse({"search", ""})->argument(0), "");
    EXPECT_EQ(parse({"--version"})->verb, Verb::version);
}

TEST(Grammar, SaysWhatIsWrong) {
    EXPECT_EQ(whyNot({}), "Say what to do.");
    EXPECT_EQ(whyNot({"shwo"}), "There is no command “shwo”.");
    EXPECT_EQ(whyNot({"layout"}), "After “layout” comes export or import.");
    EXPECT_EQ(whyNot({"show", "--json"}), "velko show has no option “--json”.");
    EXPECT_EQ(whyNot({"show", "--buried=1"}), "--buried takes no value.");
    EXPECT_EQ(whyNot({"place", "Slack"}), "velko place needs SECTION.");
    EXPECT_EQ(whyNot({"place", "Slack", "under"}), "“under” is not bar, tucked or buried.");
    EXPECT_EQ(whyNot({"open", "Slack", "Zoom"}), "“Zoom” is one word too many for velko open.");
    EXPECT_EQ(whyNot({"open", ""}), "APP is empty.");
    EXPECT_EQ(whyNot({"wait-until", "tidy", "--timeout"}), "--timeout needs SECONDS.");
    for (const char* const seconds : {"0", "-1", "1.5", "86401", "99999999999999999999", ""}) {
        EXPECT_NE(whyNot({"wait-until", "tidy", std::string("--timeout=") + seconds}), "") << seconds;
    }
    EXPECT_NE(whyNot(Words(mostWords + 1, "show")), "");
    EXPECT_NE(whyNot({"open", std::string(longestWord + 1, 'a')}), "");
    EXPECT_NE(whyNot({"open", std::string("a\0b", 3)}), "");
}

TEST(Grammar, LetsAddressesDoOnlyWhatTheyMay) {
    EXPECT_EQ(parseAddress("velko:show"), parse({"show"}));
    EXPECT_EQ(parseAddress("VELKO://show/?buried"), parse({"show", "--buried"}));
    EXPECT_EQ(parseAddress("velko:search/Google%20Drive"), parse({"search", "Google Drive"}));
    EXPECT_EQ(parseAddress("velko:search/--help"), parse({"search", "--", "--help"}));
    EXPECT_EQ(parseAddress("velko:place/Slack/buried"), parse({"place", "Slack", "buried"}));
    for (const char* const address : {"",
                                      "velko",
                                      "velko:",
                                      "velko://",
                                      "http:show",
                                      "velko:open/Slack",
                                      "velko:log",
                                      "velko:log?-f",
                                      "velko:layout%20export//tmp/a",
                                      "velko:layout/import/a",
                                      "velko:list?json",
                                      "velko:help",
                                      "velko:show/a",
                                      "velko:show#a",
                                      "velko:search/%0a",
                                      "velko:search/%4",
                                      "velko:search/%zz",
                                      "velko:search/%-1",
                                      "velko:place/Slack",
                                      "velko:show?json",
                                      "velko:wait-until/tidy"}) {
        EXPECT_FALSE(parseAddress(address)) << address;
    }
    EXPECT_FALSE(parseAddress("velko:search/" + std::string(longestAddress, 'a')));
}

TEST(Grammar, TellsACommandLineFromTheApps) {
    EXPECT_TRUE(isCommandLine("/opt/bin/velko", {}));
    EXPECT_TRUE(isCommandLine("/Applications/Velko.app/Contents/MacOS/Velko", {"status", "--json"}));
    EXPECT_TRUE(isCommandLine("Velko", {"layout"}));
    EXPECT_FALSE(isCommandLine("/Applications/Velko.app/Contents/MacOS/Velko", {}));
    EXPECT_FALSE(isCommandLine("/Applications/Velko.app/Contents/MacOS/Velko", {"--self-check"}));
    EXPECT_FALSE(isCommandLine("velko-playground", {"--home", "status"}));
}

TEST(Grammar, IsWhatAllTextsAreMadeOf) {
    const std::string all = helpText();
    const std::string man = manPage("1.2");
    for (const Row& row : rows()) {
        EXPECT_TRUE(all.contains("velko " + usageOf(row))) << row.words;
        EXPECT_TRUE(man.contains("\n.TP\n.B " + std::string(row.words.substr(0, 4)))) << row.words;
        const std::string one = helpText(row);
        EXPECT_TRUE(one.contains(row.help) && one.contains(row.option.word)) << one;
        const auto last = row.words.substr(row.words.rfind(' ') + 1);
        for (const std::string_view shell : wordsFor(Kind::shell)) {
            const std::string completions = completionsFor(shell);
            EXPECT_TRUE(completions.contains(last)) << shell << ": " << last;
            const auto option =
                row.option.word.substr(row.option.word.find_first_not_of('-') == std::string_view::npos
                                           ? 0
                                           : row.option.word.find_first_not_of('-'));
            EXPECT_TRUE(completions.contains(option)) << shell << ": " << option;
        }
    }
}

TEST(Messages, AreReadAsTheyWereWritten) {
    const Words words{"place", "Über \"A\"\n", ""};
    const std::string line = requestLine(words);
    EXPECT_EQ(std::ranges::count(line, '\n'), 1);
    EXPECT_EQ(readRequest(line), words);
    const std::string text = std::string(longestText - 1, 'a') + "é" + std::string(longestText, 'b');
    Lines lines;
    ASSERT_TRUE(lines.add(answerLines({.kind = Answer::Kind::out, .text = text})));
    std::string whole;
    while (const auto next = lines.next()) {
        whole += readAnswer(*next)->text;
    }
    EXPECT_EQ(whole, text);
    EXPECT_EQ(readAnswer(answerLines({.status = 2})), (Answer{.status = 2}));
    EXPECT_EQ(answerLines({.kind = Answer::Kind::error, .text = "\xFF"}), "{\"error\":\"\uFFFD\"}\n");
}

TEST(Messages, AreRefusedIfTheyAreNone) {
    for (const char* const line :
         {"", "show", "[]", "{}", R"({"version":2,"words":["show"]})", R"({"version":"1","words":["show"]})",
          R"({"version":1})", R"({"version":1,"words":"show"})", R"({"version":1,"words":[1]})"}) {
        EXPECT_FALSE(readRequest(line)) << line;
    }
    for (const char* const line : {"", "{}", R"({"exit":-1})", R"({"exit":256})", R"({"exit":"0"})",
                                   R"({"out":0})", R"({"what":"a"})", R"({"out":"a","exit":0})"}) {
        EXPECT_FALSE(readAnswer(line)) << line;
    }
    Lines lines;
    EXPECT_TRUE(lines.add(std::string(longestLine - 1, 'a')));
    EXPECT_TRUE(lines.add("\n"));
    EXPECT_FALSE(lines.add(std::string(longestLine, 'a') + "\n"));
}

}  // namespace
}  // namespace velko::commands
