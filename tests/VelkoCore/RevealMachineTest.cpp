#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "VelkoCore/Visibility/RevealState.h"

namespace velko {
namespace {

using State = RevealState;
using Event = RevealEvent;

struct Row {
    State from;
    std::array<State, 7> to;  ///< in the order of `events`
};

const std::array<Event, 7> events{Event::peek("B"),     Event::toggle(),    Event::toggleWithBuried(),
                                  Event::autoTuck(),    Event::peekEnded(), Event::shareStarted(),
                                  Event::shareStopped()};

TEST(RevealMachine, MovesAsTheTableSays) {
    const State collapsed = State::collapsed();
    const State revealed = State::revealed();
    const State buried = State::revealedWithBuried();
    std::vector<Row> rows{
        {collapsed,
         {State::peeking("B", collapsed), revealed, buried, collapsed, collapsed, State::shareSafe(collapsed),
          collapsed}},
        {revealed,
         {State::peeking("B", revealed), collapsed, buried, collapsed, revealed, State::shareSafe(revealed),
          revealed}},
        {buried,
         {State::peeking("B", buried), collapsed, collapsed, collapsed, buried, State::shareSafe(buried),
          buried}},
    };
    for (const State& base : {collapsed, revealed, buried}) {
        const State peek = State::peeking("A", base);
        const State share = State::shareSafe(base);
        rows.push_back(
            {peek,
             {State::peeking("B", base), collapsed, collapsed, peek, base, State::shareSafe(base), peek}});
        rows.push_back({share, {share, share, share, share, share, share, base}});
    }
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < events.size(); ++column) {
            EXPECT_EQ(RevealMachine::next(row.from, events.at(column)), row.to.at(column))
                << describe(row.from) << " on " << describe(events.at(column)) << " gave "
                << describe(RevealMachine::next(row.from, events.at(column)));
        }
    }
}

TEST(RevealState, ComparesByContentHoweverDeep) {
    EXPECT_NE(State::peeking("A", State::shareSafe(State::peeking("B", {}))),
              State::peeking("A", State::shareSafe(State::peeking("C", {}))));
    EXPECT_NE(State::peeking("A", State::revealed()), State::shareSafe(State::revealed()));
    EXPECT_NE(State::revealed(), State::revealedWithBuried());
    EXPECT_TRUE(State::peeking("A", State::revealed()).isRevealed());
    EXPECT_FALSE(State::shareSafe(State::revealed()).isRevealed());
}

TEST(RevealState, IsToldInTheWordsOfTheLog) {
    EXPECT_EQ(describe(State::peeking("X", State::revealedWithBuried())),
              "opening X (from revealed with buried)");
    EXPECT_EQ(describe(State::shareSafe(State::revealed())), "share-safe");
    EXPECT_EQ(describe(Event::peek("com.example.app")), "peek com.example.app");
    EXPECT_EQ(describe(Event::toggleWithBuried()), "toggleWithBuried");
}

}  // namespace
}  // namespace velko
