#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "Velko/Ports/CommandDoor.h"

namespace velko {

/// A door whose callers are in memory, or are brought by a program that serves a real socket.
class SimulatedCommandDoor final : public CommandDoor {
 public:
    [[nodiscard]] std::expected<void, std::string> open(Handlers handlers) override;
    void close() override;
    void send(Caller caller, const std::string& lines) override;
    void hangUp(Caller caller) override;

    /// Somebody of this machine comes in and says a line. Nobody if the door is closed.
    std::optional<Caller> come(const std::string& line);
    /// The last one of those.
    [[nodiscard]] std::optional<Caller> newest() const noexcept { return newest_; }
    /// Somebody comes in and says a line. Returns false if the door is closed.
    bool ask(Caller caller, const std::string& line);
    /// Somebody leaves before the end of the answer.
    void leave(Caller caller);

    /// What a caller has been sent so far.
    [[nodiscard]] const std::string& heard(Caller caller) { return heard_[caller]; }
    /// Whether a caller has asked and nobody has hung up.
    [[nodiscard]] bool isWaiting(Caller caller) const { return waiting_.contains(caller); }
    [[nodiscard]] bool isAnybodyIn() const noexcept { return !waiting_.empty(); }
    [[nodiscard]] bool isOpen() const noexcept { return handlers_.has_value(); }

    /// Whoever brings other callers from elsewhere hears what they are sent, instead of `heard`, and when
    /// they are let go.
    struct Outside {
        std::function<void(Caller, const std::string& lines)> send;
        std::function<void(Caller)> hangUp;
    };
    std::optional<Outside> outside;
    /// Why the door can't be opened; nothing: it can.
    std::optional<std::string> refusal;

 private:
    static constexpr Caller firstOwn = Caller{1} << 62U;

    [[nodiscard]] bool isFromOutside(Caller caller) const { return outside && caller < firstOwn; }

    std::optional<Handlers> handlers_;
    std::set<Caller> waiting_;
    std::map<Caller, std::string> heard_;
    std::optional<Caller> newest_;
};

}  // namespace velko
