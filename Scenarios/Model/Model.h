#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Scenarios/Language/Step.h"
#include "Scenarios/Model/Expected.h"
#include "Scenarios/World.h"
#include "VelkoCore/NonCopyable.h"

namespace velko::scenarios {

namespace model {

/// Something that happened.
struct Happening {
    enum class Kind { line, noteOpened, noteClosed };

    Kind kind = Kind::line;
    MainThread::Uptime at{0};
    std::string category{};  ///< of a log line
    std::string text{};      ///< of a log line, without its date
};

/// Records what Velko logs, and when its note opens and closes, also while time passes. For that it uses the
/// main thread's `onTurn`, and calls the function that was set there before. One thread.
class Recorder final : private NonCopyable {
 public:
    explicit Recorder(World& world);
    ~Recorder();

    /// What has happened since the last call, in order.
    [[nodiscard]] std::vector<Happening> take();

 private:
    void look();

    World& world_;
    std::function<void()> nextOnTurn_;
    std::uint64_t written_ = 0;  ///< how many lines have been written down
    bool wasNoteOpen_ = false;
    std::vector<Happening> happened_;
};

}  // namespace model

/// A second, simpler Velko: it says what a person should see, what the user should be asked, what is saved
/// and what the log should say. It reads every step and every line of the log, and is compared with the real
/// one after each step. To be made before Velko starts. One thread.
class Model final {
 public:
    explicit Model(World& world);

    /// To be called after each step, when no work is due. Returns what is wrong, in one line.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    World& world_;
    model::Recorder recorder_;
    model::Expected expected_;
    MainThread::Uptime checkedAt_{0};
    MainThread::Uptime touchedAt_{0};  ///< when a step last did something
};

}  // namespace velko::scenarios
