#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Velko/App/FaceParts.h"
#include "Velko/Commands/Acts.h"
#include "Velko/Commands/Grammar.h"
#include "Velko/Ports/CommandDoor.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/MainThread.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Answers the commands that come through the door, and those that come as addresses. Each caller is
/// answered by itself: one that waits holds up nobody. Main thread; owned by the delegate.
class CommandDesk final : private NonCopyable {
 public:
    static constexpr std::size_t mostAddresses = 10;  ///< in `addressPeriod`
    static constexpr auto addressPeriod = std::chrono::seconds(1);
    static constexpr auto usualTimeout = std::chrono::seconds(60);   ///< of a caller that waits
    static constexpr auto openingTimeout = std::chrono::seconds(5);  ///< of an app whose menu shall open

    explicit CommandDesk(const FaceParts& parts) : parts_(parts) {}
    ~CommandDesk() { close(); }

    /// Begins to answer.
    void open();
    /// Hangs up on everybody.
    void close();
    /// Something has changed for which somebody may be waiting.
    void sync();

    /// Somebody has opened an address of Velko's: a person, or whatever they clicked on.
    void openAddress(const std::string& address);

 private:
    using Caller = CommandDoor::Caller;

    /// What a caller waits for.
    struct Waiting {
        bool (*isReached)(const AppController&) = nullptr;
        Task timeout{};
        Subscription lines{};             ///< of the log
        std::shared_ptr<bool> opening{};  ///< while an app's menu opens
    };

    void asked(Caller caller, const std::string& line);
    void carryOut(Caller caller, const commands::Call& call);
    void followLog(Caller caller);
    void openApp(Caller caller, const std::string& text);
    void waitUntil(Caller caller, const commands::Call& call);
    void giveUpAfter(Caller caller, MainThread::Uptime time, const std::string& why);
    void finish(Caller caller, const commands::Reply& reply);

    [[nodiscard]] bool areTooMany();
    void askAbout(const std::string& shown, const commands::Call& call);
    void tellAddress(std::string_view what, const std::string& shown);

    FaceParts parts_;
    std::map<Caller, Waiting> waiting_;
    std::deque<MainThread::Uptime> addresses_;  ///< when the last ones came
    bool isFlooded_ = false;
    Task question_;
};

}  // namespace velko
