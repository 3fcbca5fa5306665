#pragma once

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

/// Something that was seen to happen.
struct Happening {
    enum class Kind { line, noteOpened, noteClosed };

    Kind kind = Kind::line;
    MainThread::Uptime at{0};
    std::string category{};  ///< of a log line
    std::string text{};      ///< of a log line, without its date
};

/// Writes down what Velko logs, and when its note opens and closes, also amid time that passes. For that it
/// takes over the main thread's `onTurn`, and passes it on. One thread.
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
    const std::string* last_ = nullptr;  ///< the newest line that was written down
    bool wasNoteOpen_ = false;
    std::vector<Happening> happened_;
};

}  // namespace model

/// A second Velko, told in the plainest way: what a person should see, what should be asked, what is saved
/// and what the log should say. It hears of every step and of every line of the log, and is compared with the
/// first after each step. Watches a world from before Velko starts. One thread.
class Model final {
 public:
    explicit Model(World& world);

    /// To be called after each step, once nothing is due. What is not as it should be, in one line.
    [[nodiscard]] std::optional<std::string> check(const script::Step& done);

 private:
    World& world_;
    model::Recorder recorder_;
    model::Expected expected_;
    MainThread::Uptime checkedAt_{0};
    MainThread::Uptime touchedAt_{0};  ///< when something last happened that nobody foresaw
};

}  // namespace velko::scenarios
