#include <cerrno>
#include <gtest/gtest.h>

#include "Playground/Serving/Server.h"
#include "Playground/Serving/Sockets.h"
#include "Velko/Commands/Sockets.h"
#include "tests/TemporaryFolder.h"

namespace velko::web {
namespace {

TEST(Waiting, EndsTheSlowAndTheOldestOfTooMany) {
    const Waiting::Time start{};
    Waiting waiting;
    waiting.enter(1, start);
    waiting.enter(2, start + std::chrono::seconds(1));
    EXPECT_TRUE(waiting.overdue(start + Waiting::patience - std::chrono::milliseconds(1)).empty());
    EXPECT_EQ(waiting.overdue(start + Waiting::patience), std::vector{1});
    waiting.leave(1);
    EXPECT_TRUE(waiting.overdue(start + Waiting::patience).empty());
    for (int socket = 3; socket <= static_cast<int>(Waiting::most) + 3; ++socket) {
        waiting.enter(socket, start + std::chrono::seconds(2));
    }
    EXPECT_EQ(waiting.overdue(start + std::chrono::seconds(2)), (std::vector{2, 3}));
}

TEST(ListeningPort, IsTakenByOneAtATimeAndSaysWhyNot) {
    std::uint16_t number = 0;
    {
        const auto port = ListeningPort::take({});
        ASSERT_TRUE(port);
        number = port->number();
        const auto second = ListeningPort::take(number);
        ASSERT_FALSE(second);
        EXPECT_EQ(second.error(), "Port " + std::to_string(number) + " is taken.");
    }
    EXPECT_TRUE(ListeningPort::take(number));
    EXPECT_EQ(whyNoPort(80, EACCES), "Port 80 can't be used: Permission denied.");
    EXPECT_EQ(whyNoPort({}, EMFILE), "No port is free: Too many open files.");
}

TEST(Server, LeadsFromTheTicketToThePageOnceAndFeedsIt) {
    const TemporaryFolder home;
    Feed feed;
    Live live(home.path(), feed);
    Server server({.gate = Gate(8080, "secret"), .ticket = Ticket("once"), .feed = feed, .live = live});
    const RequestHead ticket{.method = "GET", .path = "/open", .token = "once"};
    RequestHead peek = ticket;
    peek.method = "HEAD";
    EXPECT_EQ(server.answer(peek, "").status, 403);
    EXPECT_EQ(server.answer(ticket, "").location, "/?token=secret");
    EXPECT_EQ(server.answer(ticket, "").status, 403);

    const RequestHead events{.method = "GET", .path = "/events"};
    {
        const auto stream = server.answer(events, "").stream;
        EXPECT_TRUE(stream().value_or("").starts_with("data: {\ndata: "));
        EXPECT_EQ(stream(), std::nullopt);
        EXPECT_EQ(
            server.answer({.method = "POST", .path = "/desk"}, R"({"line":"icon title Slack \"9\""})").status,
            204);
        EXPECT_NE(stream().value_or("").find(">9<"), std::string::npos);
        EXPECT_EQ(server.answer({.method = "POST", .path = "/desk"}, R"({"line":"dance"})").status, 200);
        EXPECT_EQ(server.answer({.method = "POST", .path = "/desk"}, "dance").status, 400);
        EXPECT_EQ(feed.readers(), 1U);
    }
    EXPECT_EQ(feed.readers(), 0U);
}

}  // namespace
}  // namespace velko::web
