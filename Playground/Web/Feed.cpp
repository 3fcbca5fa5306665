#include "Playground/Web/Feed.h"

namespace velko::web {

namespace {

constexpr auto factsName = "facts";

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

}  // namespace velko::web
