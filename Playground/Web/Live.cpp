#include "Playground/Web/Live.h"

#include <utility>

#include "Playground/Web/Actions.h"
#include "Playground/Web/Picture.h"

namespace velko::web {

namespace {

constexpr auto factsName = "facts";

using std::chrono::steady_clock;

constexpr auto beat = std::chrono::milliseconds(10);
constexpr auto pause = std::chrono::milliseconds(1);    ///< between turns of a jump, so that clicks get in
constexpr auto frame = std::chrono::milliseconds(50);   ///< between two pictures of a jump
constexpr auto afterCommand = std::chrono::minutes(1);  ///< for as long, time passes without a page
constexpr auto longestTurn = std::chrono::milliseconds(12);  ///< how long a click may have to wait

}  // namespace

std::shared_ptr<Feed::Reader> Feed::subscribe() {
    const std::scoped_lock lock(mutex_);
    if (readers_ >= mostReaders) {
        return nullptr;
    }
    ++readers_;
    return std::shared_ptr<Reader>(new Reader(*this));
}

std::size_t Feed::readers() const {
    const std::scoped_lock lock(mutex_);
    return readers_;
}

void Feed::put(const std::string& name, Json value) {
    Part& part = parts_[name];
    if (part.changedAt == 0 || part.value != value) {
        part = {.value = std::move(value), .changedAt = version_ + 1};
    }
}

void Feed::publish(const Picture& picture) {
    {
        const std::scoped_lock lock(mutex_);
        for (const auto& [name, markup] : picture.regions) {
            put(name, {.value = markup});
        }
        put(factsName, picture.facts);
        ++version_;
    }
    if (onPublish) {
        onPublish();
    }
}

Feed::Reader::~Reader() {
    const std::scoped_lock lock(feed_.mutex_);
    --feed_.readers_;
}

std::optional<std::string> Feed::Reader::next() {
    Json::Object regions;
    Json::Object message;
    {
        const std::scoped_lock lock(feed_.mutex_);
        for (const auto& [name, part] : feed_.parts_) {
            if (part.changedAt > seen_) {
                (name == factsName ? message : regions).emplace(name, part.value);
            }
        }
        seen_ = feed_.version_;
    }
    if (!regions.empty()) {
        message.emplace("regions", Json{.value = std::move(regions)});
    }
    return message.empty() ? std::nullopt : std::optional(Json{.value = std::move(message)}.print());
}

Live::Live(const std::filesystem::path& home, Feed& feed) : feed_(feed), session_(home) {
    publishIfChanged();
}

Live::~Live() {
    end();
}

void Live::begin() {
    thread_ = std::thread([this] { run(); });
}

void Live::end() {
    {
        const std::scoped_lock lock(mutex_);
        isEnding_ = true;
        session_.world().quitVelko();
    }
    ended_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

Done Live::act(std::string_view action, const Json& body) {
    const std::scoped_lock lock(mutex_);
    Done done = web::act(session_, action, body);
    published_ = 0;
    publishIfChanged();
    return done;
}

void Live::setCallers(SimulatedCommandDoor::Outside callers) {
    const std::scoped_lock lock(mutex_);
    session_.mac().commands.outside = std::move(callers);
}

bool Live::ask(CommandDoor::Caller caller, const std::string& line) {
    const std::scoped_lock lock(mutex_);
    askedAt_ = steady_clock::now();
    const bool isHeard = session_.mac().commands.ask(caller, line);
    session_.settle();
    publishIfChanged();
    return isHeard;
}

void Live::leave(CommandDoor::Caller caller) {
    const std::scoped_lock lock(mutex_);
    session_.mac().commands.leave(caller);
}

bool Live::isNeeded(steady_clock::time_point now) {
    if (session_.mac().commands.isAnybodyIn()) {
        askedAt_ = now;
    }
    return feed_.readers() > 0 || (askedAt_ && now - *askedAt_ < afterCommand);
}

void Live::run() {
    auto last = steady_clock::now();
    auto drawn = last;
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, flies() ? pause : beat, [this] { return isEnding_; })) {
        const auto now = steady_clock::now();
        if (isNeeded(now)) {
            session_.pass(now - last, longestTurn);
            if (!flies() || now - drawn >= frame) {
                publishIfChanged();
                drawn = now;
            }
        }
        last = now;
    }
}

bool Live::flies() const {
    return session_.jumpLeft() > MainThread::Uptime(0);
}

void Live::publishIfChanged() {
    const auto revision = session_.revision();
    if (revision != published_) {
        feed_.publish(draw(session_));
        published_ = revision;
    }
}

}  // namespace velko::web
