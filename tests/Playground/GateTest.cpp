#include <gtest/gtest.h>

#include "Playground/Serving/Gate.h"

namespace velko::web {
namespace {

const Gate& gate() {
    static const Gate ours(8080, "secret");
    return ours;
}

RequestHead get(std::string_view path) {
    return {.method = "GET", .path = path, .host = "127.0.0.1:8080", .hosts = 1, .token = "secret"};
}

RequestHead post(std::string_view path) {
    RequestHead head = get(path);
    head.method = "POST";
    head.origin = "http://127.0.0.1:8080";
    head.contentType = "application/json";
    head.contentLength = "2";
    return head;
}

template <class Change>
int refusal(RequestHead head, Change change) {
    change(head);
    const auto refused = gate().refuse(head);
    return refused ? refused->status : 0;
}

TEST(Gate, LetsOurOwnPageIn) {
    for (const auto* path : {"/", "/events", "/page.css", "/page.js", "/icon.svg"}) {
        EXPECT_FALSE(gate().refuse(get(path))) << path;
    }
    EXPECT_FALSE(gate().refuse(post("/broom")));
    EXPECT_EQ(refusal(post("/desk"), [](auto& head) { head.fetchSite = "same-origin"; }), 0);
    EXPECT_EQ(refusal(post("/desk"), [](auto& head) { head.contentLength = "524288"; }), 0);
    EXPECT_EQ(refusal(post("/desk"), [](auto& head) { head.host = "localhost:8080"; }), 0);
    EXPECT_EQ(
        refusal(post("/desk"), [](auto& head) { head.contentType = "application/json; charset=utf-8"; }), 0);
    for (const auto* host : {"127.0.0.1", "127.0.0.1:80", "localhost"}) {
        EXPECT_FALSE(
            Gate(80, "secret").refuse({.method = "GET", .path = "/page.css", .host = host, .hosts = 1}))
            << "browsers leave out the usual port: " << host;
    }
}

TEST(Gate, TurnsAwayOtherHostsAndOtherPages) {
    for (const auto* host :
         {"", "evil.example", "127.0.0.1", "127.0.0.1:8081", "127.0.0.1:8080.evil.example"}) {
        EXPECT_EQ(refusal(get("/"), [&](auto& head) { head.host = host; }), 421) << host;
    }
    EXPECT_EQ(refusal(get("/"), [](auto& head) { head.hosts = 2; }), 421);
    for (const auto* origin :
         {"null", "", "http://evil.example", "https://127.0.0.1:8080", "http://127.0.0.1"}) {
        EXPECT_EQ(refusal(post("/desk"), [&](auto& head) { head.origin = origin; }), 403) << origin;
        EXPECT_EQ(refusal(get("/events"), [&](auto& head) { head.origin = origin; }), 403) << origin;
    }
    for (const auto* site : {"cross-site", "same-site", "none"}) {
        EXPECT_EQ(refusal(post("/desk"), [&](auto& head) { head.fetchSite = site; }), 403) << site;
    }
}

TEST(Gate, AsksForTheTokenTheTypeAndTheLength) {
    for (const auto* token : {"", "secre", "secret!", "SECRET"}) {
        EXPECT_EQ(refusal(post("/desk"), [&](auto& head) { head.token = token; }), 403) << token;
        for (const auto* path : {"/", "/events"}) {
            EXPECT_EQ(refusal(get(path), [&](auto& head) { head.token = token; }), 403) << path << token;
        }
    }
    for (const auto* type : {"", "text/plain", "application/x-www-form-urlencoded", "application/jsonp"}) {
        EXPECT_EQ(refusal(post("/desk"), [&](auto& head) { head.contentType = type; }), 415) << type;
    }
    for (const auto* length : {"", "-1", "2x", "99999999999999999999999"}) {
        EXPECT_EQ(refusal(post("/desk"), [&](auto& head) { head.contentLength = length; }), 411) << length;
    }
    EXPECT_EQ(refusal(post("/desk"), [](auto& head) { head.isChunked = true; }), 411);
    EXPECT_EQ(refusal(post("/desk"), [](auto& head) { head.contentLength = "524289"; }), 413);
}

TEST(Gate, KnowsNoOtherPathOrMethod) {
    for (const auto* path : {"/../etc/passwd", "/page.css/..", "//", "", "/layout.json", "/events/"}) {
        EXPECT_EQ(refusal(get(path), [](auto&) {}), 404) << path;
        EXPECT_EQ(refusal(post(path), [](auto&) {}), 404) << path;
    }
    EXPECT_EQ(refusal(get("/desk"), [](auto&) {}), 405);
    EXPECT_EQ(refusal(post("/desk"), [](auto& head) { head.method = "PUT"; }), 405);
    EXPECT_EQ(refusal(get("/"), [](auto& head) { head.hasRange = true; }), 400);
}

TEST(Gate, MakesAnotherTokenEveryTime) {
    EXPECT_EQ(makeToken().size(), 32U);
    EXPECT_NE(makeToken(), makeToken());
    Ticket ticket("once");
    EXPECT_FALSE(ticket.redeem("twice"));
    EXPECT_TRUE(ticket.redeem("once"));
    EXPECT_FALSE(ticket.redeem("once"));
    EXPECT_FALSE(ticket.redeem(""));
}

}  // namespace
}  // namespace velko::web
